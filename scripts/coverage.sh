#!/usr/bin/env bash
# What the tests protect: a Debug build with gcc's --coverage into build-cov/, every suite run offscreen,
# then line and branch coverage per folder of src/ as gcovr counts them (tests/, bench/ and the
# generated moc/autogen sources are left out). Extra arguments go to ctest, e.g. -R tst_logic.
set -euo pipefail
cd "$(dirname "$0")/.."
root="$PWD"

scripts/ensure-deps.sh
if ! command -v gcovr >/dev/null 2>&1; then
    echo "Installing missing package: gcovr"
    sudo=""
    if [ "$(id -u)" -ne 0 ]; then
        if command -v sudo >/dev/null 2>&1; then
            sudo="sudo"
        else
            echo "error: need root (or sudo) to install gcovr" >&2
            exit 1
        fi
    fi
    export DEBIAN_FRONTEND=noninteractive
    $sudo apt-get update -qq
    $sudo apt-get install -y -qq --no-install-recommends gcovr
fi

jobs="$(nproc)"
export QT_QPA_PLATFORM=offscreen
build=build-cov
# Counters updated atomically: the threaded suites would otherwise race on them and leave
# counts gcov cannot read (negative branch counts).
cov="--coverage -fprofile-update=atomic"
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTESSARO_BUILD_BENCH=OFF \
    -DCMAKE_C_FLAGS="$cov" -DCMAKE_CXX_FLAGS="$cov" \
    -DCMAKE_EXE_LINKER_FLAGS=--coverage -DCMAKE_SHARED_LINKER_FLAGS=--coverage \
    -DCMAKE_MODULE_LINKER_FLAGS=--coverage >/dev/null
# Objects of suites that no longer exist stay behind in an older build folder, and their notes
# (.gcno) name sources gcovr cannot read any more: drop them before counting.
ninja -C "$build" -t cleandead >/dev/null
find "$build" -name '*.gcno' | while read -r note; do
    [ -e "${note%.gcno}.o" ] || rm -f "$note"
done
cmake --build "$build" -j"$jobs"

# Counters of an earlier run would add up with this one.
find "$build" -name '*.gcda' -delete
# A failing suite still leaves its counters; report them, then fail.
status=0
(cd "$build" && ctest -j"$jobs" --output-on-failure --timeout 400 "$@") || status=$?

summary="$build/coverage-summary.json"
# Several suites compile the same source file: gcovr merges their counters per source line.
gcovr --root "$root" --object-directory "$build" \
    --filter "$root/src/" \
    --exclude '.*_autogen/.*' --exclude '.*/moc_.*' --exclude '.*qrc_.*' \
    --exclude "$root/tests/.*" --exclude "$root/bench/.*" --exclude-directories '.*/CompilerId.*' \
    --json-summary "$summary" -j"$jobs" >/dev/null

python3 - "$summary" <<'EOF'
import json, sys
files = json.load(open(sys.argv[1]))["files"]
totals = {}
for f in files:
    parts = f["filename"].split("/")
    folder = "/".join(parts[:2]) if parts[0] == "src" and len(parts) > 2 else "src"
    t = totals.setdefault(folder, [0, 0, 0, 0])
    t[0] += f["line_covered"]; t[1] += f["line_total"]
    t[2] += f["branch_covered"]; t[3] += f["branch_total"]
def pct(a, b):
    return f"{100.0 * a / b:5.1f} %" if b else "    - "
print(f"{'folder':<24} {'lines':>22} {'branches':>22}")
all_ = [0, 0, 0, 0]
for folder in sorted(totals):
    t = totals[folder]
    all_ = [x + y for x, y in zip(all_, t)]
    print(f"{folder:<24} {pct(t[0], t[1])} {t[0]:>6}/{t[1]:<6}  {pct(t[2], t[3])} {t[2]:>6}/{t[3]:<6}")
print(f"{'total':<24} {pct(all_[0], all_[1])} {all_[0]:>6}/{all_[1]:<6}  {pct(all_[2], all_[3])} {all_[2]:>6}/{all_[3]:<6}")
EOF
exit "$status"
