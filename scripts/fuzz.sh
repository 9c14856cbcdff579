#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (in build-fuzz) and runs each one for a bounded time on
# its starting corpus from fuzz/corpus/. New inputs the fuzzer finds go to a temporary folder, crash
# reproducers to build-fuzz/fuzz/. Usage: scripts/fuzz.sh [seconds per target, default 25]
set -euo pipefail
cd "$(dirname "$0")/.."

seconds="${1:-25}"
if ! command -v clang++ >/dev/null 2>&1; then
    echo "fuzz.sh: clang++ is missing (scripts/ensure-deps.sh installs it)" >&2
    exit 1
fi
launcher=()
if command -v ccache >/dev/null 2>&1; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_C_COMPILER=clang \
    -DCMAKE_CXX_COMPILER=clang++ "${launcher[@]}" -DTESSARO_BUILD_FUZZ=ON -DTESSARO_BUILD_TESTS=OFF \
    -DTESSARO_BUILD_BENCH=OFF >/dev/null
cmake --build build-fuzz --target fuzz_activexml

found="$(mktemp -d)"
trap 'rm -rf "$found"' EXIT
(cd build-fuzz/fuzz &&
    ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    ./fuzz_activexml -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=65536 \
        -print_final_stats=1 "$found" "$OLDPWD/fuzz/corpus/activexml")
echo "fuzz.sh: fuzz_activexml ran ${seconds} s without a finding"
