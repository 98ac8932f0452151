// A dialog that has just been made.
#include "dialog_fixture.h"
#include "support/message_boxes.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QMetaMethod>
#include <QPointer>
#include <QTabWidget>

#include <dialogs/customresolution.h>
#include <dialogs/edittemplate.h>
#include <widgets/picturebox.h>

#include <gtest/gtest.h>

#include <memory>

using namespace kestrel::test;

namespace {

using Construction = DialogTest;

} // namespace

TEST_F(Construction, TheDialogIsModalAndNotShown)
{
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_TRUE(dialog().isModal());
    EXPECT_EQ(dialog().parent(), nullptr);
    EXPECT_EQ(dialog().windowFlags(), QDialog().windowFlags());
}

TEST_F(Construction, TheDialogBelongsToItsParent)
{
    auto parent = std::make_unique<QWidget>();
    const QPointer<KestrelSettingUI> owned(new KestrelSettingUI(parent.get()));
    EXPECT_EQ(owned->parentWidget(), parent.get());
    EXPECT_TRUE(owned->isWindow());
    parent.reset();
    EXPECT_TRUE(owned.isNull());
}

TEST_F(Construction, NothingIsBound)
{
    EXPECT_EQ(dialog().sane_handle, nullptr);
    EXPECT_EQ(dialog().settings, nullptr);
    EXPECT_EQ(dialog().device_kind, -1);
    EXPECT_EQ(dialog().has_both_paths, 0);
    EXPECT_EQ(dialog().vid, 0U);
    EXPECT_EQ(dialog().pid, 0U);
    for (const QString& text :
         {dialog().config_path, dialog().device_name, dialog().backend_name,
          dialog().vendor_lib_path, dialog().serial_text, dialog().counter_text}) {
        EXPECT_TRUE(text.isEmpty()) << text.toStdString();
    }
    EXPECT_FALSE(dialog().vendor_driver.hasDriver());
    EXPECT_FALSE(dialog().vendor_driver.hasLegacyReader());
}

TEST_F(Construction, StateStartsAtItsDefaults)
{
    EXPECT_EQ(dialog().save_path, QStringLiteral("/tmp/"));
    EXPECT_EQ(dialog().preview_rect.left(), 0);
    EXPECT_EQ(dialog().preview_rect.top(), 0);
    EXPECT_EQ(dialog().preview_rect.right(), -1);
    EXPECT_EQ(dialog().preview_rect.bottom(), -1);
    EXPECT_FALSE(dialog().use_preview_area);
    EXPECT_EQ(dialog().scan_source_type, 0);
    EXPECT_FALSE(dialog().double_side);
    EXPECT_FALSE(dialog().flatbed_multi_crop);
    EXPECT_FALSE(dialog().updating);
    EXPECT_TRUE(dialog().portrait);
}

TEST_F(Construction, FrontColourAloneIsChosen)
{
    EXPECT_EQ(dialog().mask(), 4);
    EXPECT_TRUE(checked("front_color"));
    for (const char* name : {"front_gray", "front_bw", "rear_color", "rear_gray", "rear_bw"}) {
        EXPECT_FALSE(checked(name)) << name;
    }
}

TEST_F(Construction, TheGammaTableIsTheIdentity)
{
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(dialog().gamma_table[static_cast<std::size_t>(i)], i);
    }
}

TEST_F(Construction, TheImageTabIsCurrent)
{
    EXPECT_EQ(child<QTabWidget>(dialog(), "tabWidget").currentIndex(), 0);
}

TEST_F(Construction, TheResolutionIs200)
{
    EXPECT_EQ(combo("resolution_gengel_slide").currentIndex(), 3);
    EXPECT_EQ(combo("resolution_gengel_slide").currentText(), QStringLiteral("200"));
}

TEST_F(Construction, ColourCorrectionIsText)
{
    EXPECT_EQ(combo("color_correction").currentIndex(), 2);
}

TEST_F(Construction, WhatIsNotForUsersIsHidden)
{
    for (const char* name :
         {"test_button", "preview", "background_setting_widget", "groupBox_image_contral",
          "groupBox_add_frame", "pushButton_custum", "widget_dropout", "scan_waitingjob_widget"}) {
        EXPECT_TRUE(widget(name).isHidden()) << name;
    }
}

TEST_F(Construction, TheSeparationTabAloneIsDisabledAndHasNoTitle)
{
    const auto& tabs = child<QTabWidget>(dialog(), "tabWidget");
    ASSERT_EQ(tabs.count(), 11);
    EXPECT_EQ(tabs.tabText(7), QString());
    for (int tab = 0; tab < tabs.count(); ++tab) {
        EXPECT_EQ(tabs.isTabEnabled(tab), tab != 7) << tab;
        EXPECT_EQ(tabs.widget(tab)->isEnabled(), tab != 7) << tab;
    }
}

TEST_F(Construction, ButtonsCarryTheIdsTheRulesUse)
{
    const auto expectIds = [this](const char* group, std::initializer_list<const char*> buttons) {
        const auto& buttonGroup = child<QButtonGroup>(dialog(), group);
        int id = 0;
        for (const char* name : buttons) {
            EXPECT_EQ(buttonGroup.id(&button(name)), id++) << name;
        }
    };
    expectIds("buttonGroup_multistream",
              {"front_bw", "front_gray", "front_color", "rear_bw", "rear_gray", "rear_color"});
    expectIds("buttonGroup_multistream_dropout",
              {"front_bw_dropout", "front_gray_dropout", "front_color_dropout", "rear_bw_dropout",
               "rear_gray_dropout", "rear_color_dropout"});
    expectIds("buttonGroup_range", {"horizontal_range", "vertical_range"});
    expectIds("buttonGroup_Vertical", {"horizontal_range_preview", "vertical_range_preview"});
}

TEST_F(Construction, TheChildDialogsExistAndBelongToTheDialog)
{
    ASSERT_NE(dialog().edit_template, nullptr);
    ASSERT_NE(dialog().custom_resolution, nullptr);
    EXPECT_EQ(dialog().edit_template->parent(), &dialog());
    EXPECT_EQ(dialog().custom_resolution->parent(), &dialog());
    EXPECT_FALSE(dialog().edit_template->isVisible());
    EXPECT_FALSE(dialog().custom_resolution->isVisible());
}

// A connection that can be taken away was there.
TEST_F(Construction, TheSignalsOfGroupsReachTheDialog)
{
    using Self = KestrelSettingUI;
    const auto disconnect = [this](const char* group, void (Self::*slot)(int), const char* name) {
        auto& sender = child<QButtonGroup>(dialog(), group);
        return QObject::disconnect(&sender, &QButtonGroup::idClicked, &dialog(), slot) ||
               QObject::disconnect(&sender, SIGNAL(buttonClicked(int)), &dialog(), name);
    };
    EXPECT_TRUE(
        disconnect("buttonGroup_multistream", &Self::setMultistream, SLOT(setMultistream(int))));
    EXPECT_TRUE(disconnect("buttonGroup_multistream_dropout", &Self::setMultistream,
                           SLOT(setMultistream(int))));
    EXPECT_TRUE(disconnect("buttonGroup_range", &Self::testGroup, SLOT(testGroup(int))));
    EXPECT_TRUE(
        disconnect("buttonGroup_Vertical", &Self::previewRangeGroup, SLOT(previewRangeGroup(int))));
}

TEST_F(Construction, TheSignalsOfChildrenReachTheDialog)
{
    using Self = KestrelSettingUI;
    EXPECT_TRUE(QObject::disconnect(&child<PreviewBoxUI>(dialog(), "preview_box"),
                                    &PreviewBoxUI::selected, &dialog(), &Self::getSelectedRect));
    EXPECT_TRUE(QObject::disconnect(dialog().edit_template, &EditTemplate::addUserTemplate,
                                    &dialog(), &Self::addUserTemplateConfig));
    EXPECT_TRUE(QObject::disconnect(dialog().edit_template, &EditTemplate::resetCurrentUserTemplate,
                                    &dialog(), &Self::resetCurrentUserTemplate));
    EXPECT_TRUE(QObject::disconnect(dialog().custom_resolution,
                                    &CustomResolution::getCustomResolution, &dialog(),
                                    &Self::getCustomResolution));
}

TEST_F(Construction, EverySlotNamedAfterAControlIsConnectedToIt)
{
    const QMetaObject& meta = KestrelSettingUI::staticMetaObject;
    int slotCount = 0;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod slot = meta.method(i);
        const QByteArray name = slot.name();
        if (!name.startsWith("on_")) {
            continue;
        }
        ++slotCount;
        const int split = name.lastIndexOf('_');
        const QObject* const control =
            dialog().findChild<QObject*>(QString::fromLatin1(name.mid(3, split - 3)));
        ASSERT_NE(control, nullptr) << name.constData();
        const QByteArray signature = name.mid(split + 1) + slot.methodSignature().mid(name.size());
        bool connected = false;
        for (int s = 0; s < control->metaObject()->methodCount(); ++s) {
            const QMetaMethod signal = control->metaObject()->method(s);
            // clicked(bool) may feed a slot that takes nothing.
            if (signal.methodType() == QMetaMethod::Signal &&
                signal.name() == name.mid(split + 1) &&
                QMetaObject::checkConnectArgs(signal, slot)) {
                connected = connected || QObject::disconnect(control, signal, &dialog(), slot);
            }
        }
        EXPECT_TRUE(connected) << signature.constData() << " of " << name.constData();
    }
    EXPECT_GE(slotCount, 40);
}

TEST_F(Construction, AnUnboundDialogCanBeUsed)
{
    show();
    dialog().setAllParam();
    dialog().setPowerManager();
    dialog().scan_error(SANE_STATUS_GOOD);
    dialog().setScannerInfo();
    button("default_setting").click();
    EXPECT_TRUE(dialog().isVisible());
    button("sure").click();
    EXPECT_FALSE(dialog().isVisible());
    show();
    button("cancel").click();
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(Construction, DiscoveryWithoutAScannerReturnsAtOnce)
{
    EXPECT_EQ(dialog().GetOptionByName(), 0);
    EXPECT_EQ(combo("scanrange_setting").count(), 0);
}

TEST_F(Construction, TwoDialogsKnowNothingOfEachOther)
{
    DialogProbe other;
    FakeScanner scanner = fullScanner();
    bind(scanner);
    child<QComboBox>(dialog(), "rotate").setCurrentIndex(2);
    EXPECT_EQ(other.sane_handle, nullptr);
    EXPECT_EQ(child<QComboBox>(other, "rotate").currentIndex(), 0);
    EXPECT_EQ(child<QComboBox>(other, "source").count(), 0);
}
