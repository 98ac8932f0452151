// Which devices are there, and what tells them apart.
#include "backend/sim_env.h"

#include <map>

#include <gtest/gtest.h>

using kestrel::test::SimEnv;
using kestrel::test::SimSession;

namespace {

struct Listed
{
    std::string vendor;
    std::string model;
    std::string type;
};

std::map<std::string, Listed> listDevices()
{
    SANE_Int version = 0;
    EXPECT_EQ(sane_init(&version, nullptr), SANE_STATUS_GOOD);
    const SANE_Device** list = nullptr;
    EXPECT_EQ(sane_get_devices(&list, SANE_TRUE), SANE_STATUS_GOOD);
    std::map<std::string, Listed> devices;
    for (; list != nullptr && *list != nullptr; ++list) {
        devices[(*list)->name] = {(*list)->vendor, (*list)->model, (*list)->type};
    }
    sane_exit();
    return devices;
}

std::vector<std::string> textsOf(const SANE_Option_Descriptor& option)
{
    std::vector<std::string> texts;
    if (option.constraint_type == SANE_CONSTRAINT_STRING_LIST) {
        for (const SANE_String_Const* text = option.constraint.string_list; *text != nullptr;
             ++text) {
            texts.emplace_back(*text);
        }
    }
    return texts;
}

double maxMm(const SimSession& session, const char* option)
{
    return SANE_UNFIX(session.describe(option).constraint.range->max);
}

} // namespace

TEST(SimModels, DefaultConfigurationListsEveryModelUnderItsBackend)
{
    const SimEnv env;
    const std::map<std::string, Listed> devices = listDevices();
    const std::map<std::string, std::string> expected{
        {"kestrel_adv:duplex", "Q2380F"}, {"kestrel_adv:twopath", "Q2360F"},
        {"kestrel_adv:feeder", "Q150A"},  {"kestrel_adv:flatbed", "Q110F"},
        {"kestrel_adv:a3", "Q1410A"},     {"kestrel_adv:longpaper", "Q150L"},
        {"avision_adv:feeder", "Q240A"}};
    ASSERT_EQ(devices.size(), expected.size());
    for (const auto& [name, model] : expected) {
        ASSERT_EQ(devices.count(name), 1U) << name;
        EXPECT_EQ(devices.at(name).vendor, "Kestrel");
        EXPECT_EQ(devices.at(name).model, model);
        EXPECT_NE(devices.at(name).type.find("scanner"), std::string::npos);
    }
}

TEST(SimModels, SourcesOfEachModel)
{
    const std::vector<std::string> feeder{"ADF Front", "ADF Back", "ADF Duplex"};
    const std::map<std::string, std::vector<std::string>> expected{
        {"kestrel_adv:duplex", {"Automatic", "Flatbed", "ADF Front", "ADF Back", "ADF Duplex"}},
        {"kestrel_adv:twopath", {"Flatbed", "ADF Front", "ADF Back", "ADF Duplex"}},
        {"kestrel_adv:feeder", feeder},
        {"kestrel_adv:flatbed", {"Flatbed"}},
        {"kestrel_adv:a3", feeder},
        {"kestrel_adv:longpaper", feeder},
        {"avision_adv:feeder", feeder}};
    for (const auto& [name, sources] : expected) {
        const SimSession session({}, name);
        EXPECT_EQ(textsOf(session.describe("source")), sources) << name;
    }
}

TEST(SimModels, TheA3FeederTakesA3)
{
    const SimSession session({}, "kestrel_adv:a3");
    EXPECT_GT(maxMm(session, "br-x"), 297.0);
    EXPECT_GT(maxMm(session, "br-y"), 420.0);
}

TEST(SimModels, OnlyTheLongPaperModelOffersLongPaper)
{
    EXPECT_TRUE(SimSession({}, "kestrel_adv:longpaper").isActive("long-paper-scan"));
    EXPECT_FALSE(SimSession({}, "kestrel_adv:duplex").isActive("long-paper-scan"));
}

TEST(SimModels, AFlatbedAloneHasNoFeederOptions)
{
    const SimSession session({}, "kestrel_adv:flatbed");
    for (const char* name : {"prefeed", "eject-paper", "eject-paper-opposite-side", "padscan-count",
                             "roller-count", "bg-color-setting"}) {
        EXPECT_FALSE(session.isActive(name)) << name;
    }
    EXPECT_NE(session.find("flatbed-multi-crop"), 0);
}

TEST(SimModels, AFeederAloneHasNoMultiCrop)
{
    EXPECT_EQ(SimSession({}, "kestrel_adv:feeder").find("flatbed-multi-crop"), 0);
}

TEST(SimModels, EachBackendNamesColorDetectionItsOwnWay)
{
    EXPECT_EQ(textsOf(SimSession({}, "kestrel_adv:feeder").describe("mode")).back(),
              "Auto Detection");
    EXPECT_EQ(textsOf(SimSession({}, "avision_adv:feeder").describe("mode")).back(),
              "Auto Color Detection");
}

TEST(SimModels, SerialNumberAndUsbIdCanBeRead)
{
    const SimSession session({}, "kestrel_adv:duplex");
    EXPECT_EQ(session.text("serial-number"), "KS2380F00017");
    EXPECT_EQ(session.text("device-info"), "3d0c:c238");
}

TEST(SimModels, AnEmptyNameOpensTheFirstDevice)
{
    const SimSession session("[sim]\nserial = FIRST\n[other]\n", "kestrel_adv:");
    EXPECT_EQ(session.text("serial-number"), "FIRST");
}

TEST(SimModels, AnUnknownNameIsRefused)
{
    EXPECT_THROW(SimSession("[sim]\n", "kestrel_adv:nobody"), std::runtime_error);
}

TEST(SimModels, ADeviceCanBelongToOneBackend)
{
    const SimEnv env("[one]\nbackend = avision_adv\n[both]\n");
    const std::map<std::string, Listed> devices = listDevices();
    EXPECT_EQ(devices.size(), 3U);
    EXPECT_EQ(devices.count("avision_adv:one"), 1U);
    EXPECT_EQ(devices.count("kestrel_adv:one"), 0U);
    EXPECT_EQ(devices.count("kestrel_adv:both"), 1U);
    EXPECT_EQ(devices.count("avision_adv:both"), 1U);
}

TEST(SimModels, SourcesCanBeListedInAnyOrder)
{
    const SimSession session("[sim]\nsources = Flatbed, ADF Front, Automatic\n");
    EXPECT_EQ(textsOf(session.describe("source")),
              (std::vector<std::string>{"Flatbed", "ADF Front", "Automatic"}));
}

TEST(SimModels, ConfigurationMistakesAreInTheJournal)
{
    const SimSession session("[sim]\nfeeder-area = wide\nserial = X\n");
    const std::vector<std::string> journal = session.journal();
    EXPECT_NE(std::find(journal.begin(), journal.end(), "config line 2: feeder-area = wide"),
              journal.end());
    EXPECT_EQ(session.text("serial-number"), "X");
}
