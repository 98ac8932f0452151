#include "bare_calls.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace kestrel::bench {

using kestrel::test::Call;
using kestrel::test::CallKind;

namespace {

/// Room behind a value: texts are looked at for 64 bytes, whatever their length.
constexpr std::size_t kPadding = 128;
/// One read of a frame asks for as much as there is.
constexpr std::size_t kReadSize = std::size_t{128} << 20U;

} // namespace

BareCalls::BareCalls(const kestrel::test::Journal& journal)
{
    for (const Call& call : journal.calls()) {
        std::vector<unsigned char> value = call.raw;
        value.resize(call.kind == CallKind::Read ? kReadSize : value.size() + kPadding);
        m_calls.push_back({call.kind, call.index, call.nullValue, std::move(value)});
    }
}

void BareCalls::make(SANE_Handle handle)
{
    for (BareCall& call : m_calls) {
        make(call, handle);
    }
}

void BareCalls::make(BareCall& call, SANE_Handle handle)
{
    void* const value = call.nullValue ? nullptr : call.value.data();
    SANE_Parameters parameters{};
    SANE_Int length = 0;
    switch (call.kind) {
    case CallKind::Describe:
        benchmark::DoNotOptimize(sane_get_option_descriptor(handle, call.index));
        break;
    case CallKind::Get:
        sane_control_option(handle, call.index, SANE_ACTION_GET_VALUE, value, nullptr);
        break;
    case CallKind::Set:
        sane_control_option(handle, call.index, SANE_ACTION_SET_VALUE, value, nullptr);
        break;
    case CallKind::Start:
        sane_start(handle);
        break;
    case CallKind::Parameters:
        sane_get_parameters(handle, &parameters);
        break;
    case CallKind::Read:
        sane_read(handle, call.value.data(), static_cast<SANE_Int>(call.value.size()), &length);
        break;
    case CallKind::Cancel:
        sane_cancel(handle);
        break;
    case CallKind::Open:
    case CallKind::Close:
    case CallKind::SetAuto:
        break;
    }
}

} // namespace kestrel::bench
