// The sane_* functions of the stand-in.
#include "support/fake_state.h"

#include <sane/sane.h>

#include <algorithm>
#include <cstring>

using kestrel::test::Call;
using kestrel::test::CallKind;
using kestrel::test::FakeFrame;
using kestrel::test::FakeOption;
using kestrel::test::fakeSaneMutex;
using kestrel::test::FakeScanner;
using kestrel::test::livingScanners;
using kestrel::test::stateOf;

namespace {

using Lock = std::lock_guard<std::recursive_mutex>;
using State = FakeScanner::State;

Call optionCall(CallKind kind, SANE_Int index, const FakeOption* option)
{
    Call call;
    call.kind = kind;
    call.index = index;
    call.known = option != nullptr;
    call.name = option != nullptr ? option->name() : "#" + std::to_string(index);
    if (option != nullptr) {
        call.type = option->type();
    }
    return call;
}

SANE_Status record(State& state, Call call, SANE_Status status)
{
    call.status = status;
    state.calls.push_back(std::move(call));
    return status;
}

SANE_Status plainCall(State& state, CallKind kind)
{
    Call call;
    call.kind = kind;
    return record(state, call, state.admit(kind, {}));
}

// A backend refuses what is inactive, what does not exist and what has no value.
bool hasValue(const FakeOption* option)
{
    return option != nullptr && option->isActive() && option->type() != SANE_TYPE_GROUP;
}

SANE_Status getValue(State& state, Call call, const FakeOption* option, void* value)
{
    SANE_Status status = state.admit(CallKind::Get, call.name);
    if (status == SANE_STATUS_GOOD && (!hasValue(option) || value == nullptr)) {
        status = SANE_STATUS_INVAL;
    }
    if (status == SANE_STATUS_GOOD) {
        call.raw = option->readInto(value);
        call.value = FakeOption::decode(option->type(), call.raw);
    }
    return record(state, std::move(call), status);
}

SANE_Status setValue(State& state, Call call, FakeOption* option, const void* value)
{
    SANE_Status status = state.admit(CallKind::Set, call.name);
    if (option != nullptr) {
        call.raw = option->takeFrom(value, state.wholeBuffers);
        call.value = FakeOption::decode(option->type(), call.raw);
    }
    if (status == SANE_STATUS_GOOD && (!hasValue(option) || call.index == 0)) {
        status = SANE_STATUS_INVAL;
    }
    if (status == SANE_STATUS_GOOD && !call.raw.empty()) {
        option->bytes(call.raw);
    }
    const std::string name = call.name;
    record(state, std::move(call), status);
    if (status == SANE_STATUS_GOOD) {
        for (const auto& hook : state.setHooks[name]) {
            hook(*state.owner);
        }
    }
    return status;
}

} // namespace

extern "C" {

SANE_Status sane_init(SANE_Int* version, SANE_Auth_Callback /*authorize*/)
{
    if (version != nullptr) {
        *version = SANE_VERSION_CODE(1, 0, 0);
    }
    return SANE_STATUS_GOOD;
}

void sane_exit() {}

SANE_Status sane_get_devices(const SANE_Device*** list, SANE_Bool /*localOnly*/)
{
    const Lock lock(fakeSaneMutex());
    static std::vector<SANE_Device> devices;
    static std::vector<const SANE_Device*> pointers;
    devices.clear();
    pointers.clear();
    for (const State* state : livingScanners()) {
        devices.push_back({state->deviceName.c_str(), "Stand-in", "Scanner", "sheetfed scanner"});
    }
    for (const SANE_Device& device : devices) {
        pointers.push_back(&device);
    }
    pointers.push_back(nullptr);
    *list = pointers.data();
    return SANE_STATUS_GOOD;
}

SANE_Status sane_open(SANE_String_Const name, SANE_Handle* handle)
{
    const Lock lock(fakeSaneMutex());
    for (State* state : livingScanners()) {
        if (state->deviceName == name) {
            *handle = state;
            return plainCall(*state, CallKind::Open);
        }
    }
    return SANE_STATUS_INVAL;
}

void sane_close(SANE_Handle handle)
{
    const Lock lock(fakeSaneMutex());
    if (State* const state = stateOf(handle)) {
        plainCall(*state, CallKind::Close);
    }
}

const SANE_Option_Descriptor* sane_get_option_descriptor(SANE_Handle handle, SANE_Int index)
{
    const Lock lock(fakeSaneMutex());
    State* const found = stateOf(handle);
    if (found == nullptr) {
        return nullptr;
    }
    State& state = *found;
    FakeOption* const option = state.at(index);
    Call call = optionCall(CallKind::Describe, index, option);
    const SANE_Status status = state.admit(CallKind::Describe, call.name);
    record(state, std::move(call), status);
    if (status != SANE_STATUS_GOOD || option == nullptr || (index == 0 && state.countHidden)) {
        return nullptr;
    }
    return option->descriptor();
}

SANE_Status sane_control_option(SANE_Handle handle, SANE_Int index, SANE_Action action, void* value,
                                SANE_Int* info)
{
    const Lock lock(fakeSaneMutex());
    State* const found = stateOf(handle);
    if (found == nullptr) {
        return SANE_STATUS_INVAL;
    }
    State& state = *found;
    FakeOption* const option = state.at(index);
    Call call = optionCall(action == SANE_ACTION_GET_VALUE   ? CallKind::Get
                           : action == SANE_ACTION_SET_VALUE ? CallKind::Set
                                                             : CallKind::SetAuto,
                           index, option);
    call.infoAsked = info != nullptr;
    call.nullValue = value == nullptr;
    if (info != nullptr) {
        *info = 0;
    }
    switch (action) {
    case SANE_ACTION_GET_VALUE:
        return getValue(state, std::move(call), option, value);
    case SANE_ACTION_SET_VALUE:
        return setValue(state, std::move(call), option, value);
    case SANE_ACTION_SET_AUTO:
        break;
    }
    const SANE_Status status = state.admit(CallKind::SetAuto, call.name);
    return record(state, std::move(call), status);
}

SANE_Status sane_get_parameters(SANE_Handle handle, SANE_Parameters* parameters)
{
    const Lock lock(fakeSaneMutex());
    State* const found = stateOf(handle);
    if (found == nullptr) {
        return SANE_STATUS_INVAL;
    }
    State& state = *found;
    SANE_Status status = state.admit(CallKind::Parameters, {});
    if (status == SANE_STATUS_GOOD) {
        const FakeFrame none;
        const FakeFrame& frame = state.current          ? *state.current
                                 : state.frames.empty() ? none
                                                        : state.frames.front();
        status = frame.parametersStatus;
        if (status == SANE_STATUS_GOOD) {
            *parameters = frame.parameters;
        }
    }
    Call call;
    call.kind = CallKind::Parameters;
    return record(state, call, status);
}

SANE_Status sane_start(SANE_Handle handle)
{
    const Lock lock(fakeSaneMutex());
    State* const found = stateOf(handle);
    if (found == nullptr) {
        return SANE_STATUS_INVAL;
    }
    State& state = *found;
    SANE_Status status = state.admit(CallKind::Start, {});
    if (status == SANE_STATUS_GOOD && state.frames.empty()) {
        status = SANE_STATUS_NO_DOCS;
    }
    if (status == SANE_STATUS_GOOD) {
        FakeFrame frame = state.frames.front();
        state.frames.pop_front();
        status = frame.start;
        if (status == SANE_STATUS_GOOD) {
            state.current = std::move(frame);
            state.position = 0;
            state.chunk = 0;
        }
    }
    Call call;
    call.kind = CallKind::Start;
    return record(state, call, status);
}

SANE_Status sane_read(SANE_Handle handle, SANE_Byte* data, SANE_Int maxLength, SANE_Int* length)
{
    const Lock lock(fakeSaneMutex());
    State* const found = stateOf(handle);
    if (found == nullptr) {
        return SANE_STATUS_INVAL;
    }
    State& state = *found;
    *length = 0;
    Call call;
    call.kind = CallKind::Read;
    const SANE_Status status = state.admit(CallKind::Read, {});
    if (status != SANE_STATUS_GOOD) {
        return record(state, call, status);
    }
    if (!state.current) {
        return record(state, call, SANE_STATUS_CANCELLED);
    }
    const FakeFrame& frame = *state.current;
    const std::size_t left = frame.bytes.size() - state.position;
    if (left == 0) {
        return record(state, call, frame.end);
    }
    SANE_Int most = maxLength;
    if (!frame.chunks.empty()) {
        most = std::min(most, frame.chunks[std::min(state.chunk++, frame.chunks.size() - 1)]);
    }
    const std::size_t count = std::min(left, static_cast<std::size_t>(std::max(most, 0)));
    if (count > 0) {
        std::memcpy(data, frame.bytes.data() + state.position, count);
    }
    state.position += count;
    *length = static_cast<SANE_Int>(count);
    call.value = std::to_string(count);
    return record(state, call, SANE_STATUS_GOOD);
}

void sane_cancel(SANE_Handle handle)
{
    const Lock lock(fakeSaneMutex());
    if (State* const state = stateOf(handle)) {
        plainCall(*state, CallKind::Cancel);
        state->current.reset();
    }
}

SANE_Status sane_set_io_mode(SANE_Handle /*handle*/, SANE_Bool nonBlocking)
{
    return nonBlocking == SANE_TRUE ? SANE_STATUS_UNSUPPORTED : SANE_STATUS_GOOD;
}

SANE_Status sane_get_select_fd(SANE_Handle /*handle*/, SANE_Int* /*fd*/)
{
    return SANE_STATUS_UNSUPPORTED;
}

SANE_String_Const sane_strstatus(SANE_Status status)
{
    constexpr const char* texts[] = {"Success",
                                     "Operation not supported",
                                     "Operation was cancelled",
                                     "Device busy",
                                     "Invalid argument",
                                     "End of file reached",
                                     "Document feeder jammed",
                                     "Document feeder out of documents",
                                     "Scanner cover is open",
                                     "Error during device I/O",
                                     "Out of memory",
                                     "Access to resource has been denied"};
    const auto index = static_cast<std::size_t>(status);
    return index < std::size(texts) ? texts[index] : "Unknown status";
}

} // extern "C"
