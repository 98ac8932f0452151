#include "reliability/allocation_faults.h"

#include <sane/sane.h>

#include <cstdlib>
#include <new>

namespace {

struct Plan
{
    long n = 0;
    long count = 0;
    bool lasting = false;
    bool armed = false;
};

Plan plan;

bool fails()
{
    if (!plan.armed) {
        return false;
    }
    const long number = ++plan.count;
    return plan.n > 0 && (number == plan.n || (plan.lasting && number > plan.n));
}

} // namespace

using kestrel::test::AllocationPause;

extern "C" {

void* __real__Znwm(std::size_t size);
void* __real__Znam(std::size_t size);
void* __real_malloc(std::size_t size);

void* __wrap__Znwm(std::size_t size)
{
    if (fails()) {
        throw std::bad_alloc();
    }
    return __real__Znwm(size);
}

void* __wrap__Znam(std::size_t size)
{
    if (fails()) {
        throw std::bad_alloc();
    }
    return __real__Znam(size);
}

void* __wrap_malloc(std::size_t size)
{
    return fails() ? nullptr : __real_malloc(size);
}

// The stand-in for libsane is a part of this program, too.
const SANE_Option_Descriptor* __real_sane_get_option_descriptor(SANE_Handle handle, SANE_Int index);
SANE_Status __real_sane_control_option(SANE_Handle handle, SANE_Int index, SANE_Action action,
                                       void* value, SANE_Int* info);
SANE_Status __real_sane_start(SANE_Handle handle);
SANE_Status __real_sane_get_parameters(SANE_Handle handle, SANE_Parameters* parameters);
SANE_Status __real_sane_read(SANE_Handle handle, SANE_Byte* data, SANE_Int most, SANE_Int* length);
void __real_sane_cancel(SANE_Handle handle);

const SANE_Option_Descriptor* __wrap_sane_get_option_descriptor(SANE_Handle handle, SANE_Int index)
{
    const AllocationPause pause;
    return __real_sane_get_option_descriptor(handle, index);
}

SANE_Status __wrap_sane_control_option(SANE_Handle handle, SANE_Int index, SANE_Action action,
                                       void* value, SANE_Int* info)
{
    const AllocationPause pause;
    return __real_sane_control_option(handle, index, action, value, info);
}

SANE_Status __wrap_sane_start(SANE_Handle handle)
{
    const AllocationPause pause;
    return __real_sane_start(handle);
}

SANE_Status __wrap_sane_get_parameters(SANE_Handle handle, SANE_Parameters* parameters)
{
    const AllocationPause pause;
    return __real_sane_get_parameters(handle, parameters);
}

SANE_Status __wrap_sane_read(SANE_Handle handle, SANE_Byte* data, SANE_Int most, SANE_Int* length)
{
    const AllocationPause pause;
    return __real_sane_read(handle, data, most, length);
}

void __wrap_sane_cancel(SANE_Handle handle)
{
    const AllocationPause pause;
    __real_sane_cancel(handle);
}

} // extern "C"

namespace kestrel::test {

AllocationFaults::AllocationFaults(long n, bool lasting)
{
    plan = {n, 0, lasting, true};
}

AllocationFaults::~AllocationFaults()
{
    plan.armed = false;
}

long AllocationFaults::count()
{
    return plan.count;
}

AllocationPause::AllocationPause() : m_armed(plan.armed)
{
    plan.armed = false;
}

AllocationPause::~AllocationPause()
{
    plan.armed = m_armed;
}

} // namespace kestrel::test
