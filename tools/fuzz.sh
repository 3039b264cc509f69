#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang (ASan and UBSan on) into build-fuzz and runs
# each one from its checked-in corpus for a number of seconds; stops with an error on the first
# finding, whose input libFuzzer writes to build-fuzz/findings/.
#
#   tools/fuzz.sh                    # every target, 15 s each
#   tools/fuzz.sh 600 access_sql     # one target (or several) for ten minutes
#   LF_FUZZ_FLAGS="-jobs=4 -workers=4" tools/fuzz.sh 3600 merge   # extra libFuzzer options
#
# New inputs that the runs find are kept in build-fuzz/corpus/<target>/, not in the tree.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-15}"
shift || true

tools/setup-debian.sh
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends \
  clang libclang-rt-14-dev >/dev/null

CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DLF_FUZZ=ON -DLF_BENCH=OFF \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
targets=("$@")
if [ "${#targets[@]}" -eq 0 ]; then
  for dir in fuzz/corpus/*/; do targets+=("$(basename "$dir")"); done
fi
cmake --build build-fuzz -j"$(nproc)" --target "${targets[@]/#/fuzz_}"

# The real Access samples kept beside the project make the best seeds for damaged files.
declare -A extra_corpus=()
if [ -d ../shared/data/mdb ]; then extra_corpus[access_file]="../shared/data/mdb"; fi

mkdir -p build-fuzz/findings
export ASAN_OPTIONS="detect_leaks=1:allocator_may_return_null=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
for target in "${targets[@]}"; do
  corpus="build-fuzz/corpus/$target"
  mkdir -p "$corpus"
  echo "== fuzz_$target: ${seconds} s"
  # shellcheck disable=SC2086  # the extra options are words
  build-fuzz/fuzz/"fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
    -print_final_stats=1 -artifact_prefix="build-fuzz/findings/$target-" ${LF_FUZZ_FLAGS:-} \
    "$corpus" "fuzz/corpus/$target" ${extra_corpus[$target]:-}
done
