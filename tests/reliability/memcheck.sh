#!/usr/bin/env bash
# The test programs under valgrind's memcheck, as ctest starts them. A finding fails its test.
# Left out are tests that are scripts, the same programs at other scales, and the walks over each failing
# call or allocation (memcheck knows of no allocation that fails).
# usage: memcheck.sh BUILD [REGEX]
set -euo pipefail
build=$(cd "$1" && pwd)
wanted=${2:-.}
here=$(cd "$(dirname "$0")" && pwd)

left_out='_at_(1\.5|2)$|^house_|^docs_|^package_|^scanhost_|^backend_(exports|scanimage|saned)|hardening|catalogue_complete|allocation_|no_memory|kill_loop'
# One row of these pictures is left as the memory came, and the tests read it. Memcheck holds back what is
# freed, so that no memory stays flat.
export GTEST_FILTER=-*AsTheMemoryCame:*TheLastRowIsNotTheScanners:*MemoryAndDescriptorsStayAsTheyAre

options=(--leak-check=no --error-exitcode=9 --num-callers=30 --undef-value-errors=yes)
ctest --test-dir "$build" -T MemCheck --parallel "$(nproc)" --output-on-failure \
    --overwrite MemoryCheckCommand="$(command -v valgrind)" \
    --overwrite MemoryCheckCommandOptions="${options[*]}" \
    --overwrite MemoryCheckSuppressionFile="$here/toolkit.supp" \
    -R "$wanted" -E "$left_out"
