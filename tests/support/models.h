/// @file
/// Ready-made stand-in scanners with every option that the dialog reads or writes.
#pragma once

#include "support/fake_scanner.h"

#include <string>
#include <vector>

namespace kestrel::test {

/// What distinguishes one model from the other; lengths in mm.
struct ScannerModel
{
    std::vector<std::string> sources{"Automatic", "Flatbed", "ADF Front", "ADF Back", "ADF Duplex"};
    std::string source = "ADF Front";
    double width = 215.9;
    double feederHeight = 355.6;
    double flatbedHeight = 297.0;
    double longHeight = 3000.0; ///< feeder height while "long-paper-scan" is on
};

/// Makes a scanner. The upper limit of "br-y" follows "source" and "long-paper-scan" like a real
/// one's.
FakeScanner makeScanner(const ScannerModel& model);

/// Feeder and flatbed, chosen by itself if wanted.
FakeScanner fullScanner();
/// Feeder alone.
FakeScanner feederScanner();
/// Flatbed alone.
FakeScanner flatbedScanner();
/// Flatbed and feeder, in this order, without "Automatic".
FakeScanner flatbedAndFeederScanner();
/// Feeder and flatbed, in this order, without "Automatic".
FakeScanner feederAndFlatbedScanner();
/// A feeder that takes A3.
FakeScanner a3Scanner();

} // namespace kestrel::test
