// The names by which hosts find functions and the model table.
#include <kestrelsettingui.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Strings = std::vector<std::string>;

// A host that resolves the functions hands the record over as raw memory, by these numbers.
static_assert(offsetof(ScannerIdentity, vid) == 0);
static_assert(offsetof(ScannerIdentity, pid) == 4);
static_assert(offsetof(ScannerIdentity, name) == 8);
static_assert(offsetof(ScannerIdentity, backend) == 136);
static_assert(sizeof(ScannerIdentity) == 264);

} // namespace

TEST(ModelTable, NamesAndProductIdsGoTogether)
{
    const std::vector<std::string> names(std::begin(kestrel_model_names),
                                         std::end(kestrel_model_names));
    const std::vector<std::string> ids(std::begin(kestrel_model_product_ids),
                                       std::end(kestrel_model_product_ids));
    EXPECT_EQ(names, (Strings{"Q1410A", "Q2380F", "Q150A"}));
    EXPECT_EQ(ids, (Strings{"c141", "c238", "c150"}));
}

// Hosts resolve the functions by these symbol names.
extern void* symbolCreate(void*) __asm__("_Z17creatKestrelSetUIPv");
extern void symbolInit(void*, void*, void*, const char*) __asm__("_Z16initKestrelSetUIPvS_S_PKc");
extern void symbolSetDevice(void*, void*) __asm__("_Z9setDevicePvS_");
extern int symbolShow(void*) __asm__("_Z10showWindowPv");
extern void symbolSetAll(void*) __asm__("_Z22setAllParamBySettingUIPv");
extern int symbolTemplate(void*, int) __asm__("_Z17setButtonTemplagePvi");
extern int symbolResolution(void*) __asm__("_Z20getCurrentResolutionPv");
extern int symbolFiletype(void*) __asm__("_Z18getCurrentFiletypePv");
extern int symbolSource(void*) __asm__("_Z17getScanSourceTypePv");
extern int symbolSingle(void*) __asm__("_Z12isSingleScanPv");
extern int symbolWaiting(void*) __asm__("_Z17getWaitingJobTimePv");
extern bool symbolDouble(void*) __asm__("_Z16isDoubleSideScanPv");
extern bool symbolBlank(void*, bool) __asm__("_Z16setBlankPageFuncPvb");
extern bool symbolSplit(void*) __asm__("_Z11isSplitScanPv");
extern QString symbolProbe(QString) __asm__("_Z9outGetStr7QString");
extern unsigned char* symbolPixels(unsigned char*, int, int) __asm__("_Z9RGB24TO32Phii");

TEST(SymbolNames, AreThoseThatHostsResolve)
{
    EXPECT_EQ(&symbolCreate, &creatKestrelSetUI);
    EXPECT_EQ(&symbolInit, &initKestrelSetUI);
    EXPECT_EQ(&symbolSetDevice, &setDevice);
    EXPECT_EQ(&symbolShow, &showWindow);
    EXPECT_EQ(&symbolSetAll, &setAllParamBySettingUI);
    EXPECT_EQ(&symbolTemplate, &setButtonTemplage);
    EXPECT_EQ(&symbolResolution, &getCurrentResolution);
    EXPECT_EQ(&symbolFiletype, &getCurrentFiletype);
    EXPECT_EQ(&symbolSource, &getScanSourceType);
    EXPECT_EQ(&symbolSingle, &isSingleScan);
    EXPECT_EQ(&symbolWaiting, &getWaitingJobTime);
    EXPECT_EQ(&symbolDouble, &isDoubleSideScan);
    EXPECT_EQ(&symbolBlank, &setBlankPageFunc);
    EXPECT_EQ(&symbolSplit, &isSplitScan);
    EXPECT_EQ(&symbolProbe, &outGetStr);
    EXPECT_EQ(&symbolPixels, &RGB24TO32);
}
