/// @file
/// The calls that a program made on a scanner, made once more without anything around them.
#pragma once

#include "support/journal.h"

#include <sane/sane.h>

#include <vector>

namespace kestrel::bench {

/// What a job of the dialog is measured against: the requests that it cannot do without, in a loop.
class BareCalls
{
public:
    explicit BareCalls(const kestrel::test::Journal& journal);

    /// Makes all calls, in their order.
    void make(SANE_Handle handle);

    std::size_t count() const { return m_calls.size(); }

private:
    struct BareCall
    {
        kestrel::test::CallKind kind;
        SANE_Int index;
        bool nullValue;
        std::vector<unsigned char>
            value; ///< what is set, padded with zeroes; room for what is read
    };

    static void make(BareCall& call, SANE_Handle handle);

    std::vector<BareCall> m_calls;
};

} // namespace kestrel::bench
