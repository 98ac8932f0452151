// What the shared library offers to hosts that load it at run time.
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <link.h>

#include <string>

namespace {

class Exports : public testing::Test
{
protected:
    Exports() : m_library(dlopen(SETTINGUI_LIBRARY, RTLD_NOW | RTLD_LOCAL))
    {
        EXPECT_NE(m_library, nullptr) << dlerror();
    }

    bool has(const char* symbol) const { return dlsym(m_library, symbol) != nullptr; }

    void* m_library;
};

} // namespace

TEST_F(Exports, HostFunctionsAreFoundByTheirSymbolNames)
{
    for (const char* symbol :
         {"_Z17creatKestrelSetUIPv", "_Z16initKestrelSetUIPvS_S_PKc", "_Z9setDevicePvS_",
          "_Z10showWindowPv", "_Z22setAllParamBySettingUIPv", "_Z17setButtonTemplagePvi",
          "_Z20getCurrentResolutionPv", "_Z18getCurrentFiletypePv", "_Z17getScanSourceTypePv",
          "_Z12isSingleScanPv", "_Z17getWaitingJobTimePv", "_Z16isDoubleSideScanPv",
          "_Z16setBlankPageFuncPvb", "_Z11isSplitScanPv", "_Z9outGetStr7QString",
          "_Z9RGB24TO32Phii"}) {
        EXPECT_TRUE(has(symbol)) << symbol;
    }
}

TEST_F(Exports, ResourceInitialisersAreFound)
{
    EXPECT_TRUE(has("_Z22qInitResources_picturev"));
    EXPECT_TRUE(has("_Z25qCleanupResources_picturev"));
}

TEST_F(Exports, ClassesAreFound)
{
    for (const char* symbol :
         {"_ZTV16KestrelSettingUI", "_ZN16KestrelSettingUI16staticMetaObjectE",
          "_ZN16KestrelSettingUI12kst_SetParamEPKcS1_", "_ZTV12EditTemplate",
          "_ZTV15AddUserTemplate", "_ZTV16CustomResolution", "_ZTV12PreviewBoxUI", "_ZTV9PreViewUI",
          "_ZTV8MyWidget", "_ZTV7MyLabel", "_ZTV13CMyPushButton"}) {
        EXPECT_TRUE(has(symbol)) << symbol;
    }
}

TEST_F(Exports, ModelTableIsFound)
{
    const auto* const names =
        static_cast<const char* const*>(dlsym(m_library, "kestrel_model_names"));
    const auto* const ids =
        static_cast<const char* const*>(dlsym(m_library, "kestrel_model_product_ids"));
    ASSERT_NE(names, nullptr);
    ASSERT_NE(ids, nullptr);
    EXPECT_STREQ(names[1], "Q2380F");
    EXPECT_STREQ(ids[1], "c238");
}

TEST_F(Exports, InnerWorkIsNot)
{
    EXPECT_FALSE(has("_ZN7kestrel10statusTextE11SANE_Status"));
    EXPECT_FALSE(has("_ZN7kestrel15setOptionByNameEPvPKcS2_RKSt5arrayIiLm256EE"));
}

TEST_F(Exports, TheLibraryKnowsItsVersionedName)
{
    const link_map* map = nullptr;
    ASSERT_EQ(dlinfo(m_library, RTLD_DI_LINKMAP, &map), 0);
    const char* strings = nullptr;
    ElfW(Xword) offset = 0;
    for (const ElfW(Dyn)* entry = map->l_ld; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == DT_STRTAB) {
            strings = reinterpret_cast<const char*>(entry->d_un.d_ptr);
        } else if (entry->d_tag == DT_SONAME) {
            offset = entry->d_un.d_val;
        }
    }
    ASSERT_NE(strings, nullptr);
    EXPECT_EQ(std::string(strings + offset), "libkestrel-settingui.so.1");
}
