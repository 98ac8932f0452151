/// @file
/// Lets allocations of this program's own objects fail: the linker leads their calls of operator
/// new and malloc() here. The toolkit's are its own and do not fail.
#pragma once

#include <QtGlobal>

namespace kestrel::test {

/// While it lives, allocation number @p n (from 1; 0: none) and every later one if @p lasting
/// fails.
class AllocationFaults
{
public:
    explicit AllocationFaults(long n, bool lasting = false);
    ~AllocationFaults();
    Q_DISABLE_COPY_MOVE(AllocationFaults)

    /// @return how many there were so far
    static long count();
};

/// What the test itself allocates while it lives neither fails nor counts.
class AllocationPause
{
public:
    AllocationPause();
    ~AllocationPause();
    Q_DISABLE_COPY_MOVE(AllocationPause)

private:
    bool m_armed;
};

} // namespace kestrel::test
