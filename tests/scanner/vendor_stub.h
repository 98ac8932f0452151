/// @file
/// What a stand-in for the vendor's library is told and what it noted down. Found by name with
/// dlsym().
#pragma once

#include <cstddef>
#include <cstdint>

/// The one object of each library.
struct VendorStub
{
    // Answers
    int initializeDriver = 0;
    int readNvm = 0;
    int readLegacy = 1;
    std::uint32_t words[64] = {}; ///< the record that a read delivers
    std::size_t bytes = 24;       ///< how much of it is delivered
    std::uint32_t device = 0;     ///< what AVInitializeDevice writes
    bool writesDevice = true;
    void* dataLeft = nullptr;     ///< where the request points after a read, if not left alone
    void (*hook)(char) = nullptr; ///< what each function does besides, with its letter

    // Notes
    char calls[256] = {}; ///< the functions called, a letter each: I T D R F L
    int driver = 0;       ///< what all calls had; -1 when they differ
    int deviceIndex = -1;
    const void* deviceGiven = nullptr; ///< where AVInitializeDevice was to write
    const void* deviceRead = nullptr;  ///< what AVReadNVMData had for the device
    std::uint32_t deviceSeen = 0;      ///< the device word at the read
    std::uint64_t sizeSeen = 99;       ///< the request's size at the read
    bool sizePointerFits = false;      ///< the last argument pointed at the request's size
    int zeroSeen = -1;
    bool recordWasZero = false; ///< all 256 bytes of the buffer, before a read
};
