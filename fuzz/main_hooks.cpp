// What the fuzzing library and the sanitizers ask for by name.
#include "bench.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    kestrel::fuzz::start();
    return 0;
}

// Leaks are looked for by the tests: the dialog and the toolkit keep some things on purpose. Whole
// call stacks of each allocation cost a quarter of the speed: a finding is run again with
// ASAN_OPTIONS=malloc_context_size=30.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer looks for this name
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options()
{
    return "detect_leaks=0:allocator_may_return_null=1:malloc_context_size=2:quarantine_size_mb=32";
}

// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer looks for this name
extern "C" __attribute__((visibility("default"))) const char* __ubsan_default_options()
{
    return "print_stacktrace=1";
}
