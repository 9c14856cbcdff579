#!/usr/bin/env bash
# Installs what is missing, builds with AddressSanitizer + UndefinedBehaviorSanitizer and runs every
# suite offscreen; then builds with ThreadSanitizer and runs the threaded suites again.
set -euo pipefail
cd "$(dirname "$0")"

scripts/ensure-deps.sh
jobs="$(nproc)"
export QT_QPA_PLATFORM=offscreen

start=$(date +%s)
cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DSANITIZE=address >/dev/null
cmake --build build-asan -j"$jobs"
(cd build-asan && ctest -j"$jobs" --output-on-failure --timeout 300)

cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DSANITIZE=thread -DTESSARO_BUILD_BENCH=OFF >/dev/null
cmake --build build-tsan -j"$jobs"
(cd build-tsan && ctest -j"$jobs" -L threaded --output-on-failure --timeout 300 --no-tests=error)
echo "test.sh: all suites passed in $(( $(date +%s) - start )) s"
