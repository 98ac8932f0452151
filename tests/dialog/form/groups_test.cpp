// Layouts and button groups: not widgets, but found by name and by membership.
#include "dialog/form/form.h"

#include <QButtonGroup>
#include <QLayout>
#include <QStringList>

#include <map>

using kestrel::test::Form;

TEST(FormNames, LayoutsThatCodeRefersToStandInTheirWidgets)
{
    Form form;
    const std::map<const char*, const char*> layouts = {
        {"verticalLayout_3", "KestrelSetting"}, {"horizontalLayout", "widget_13"},
        {"verticalLayout", "widget_rear"},      {"verticalLayout_2", "widget_front"},
        {"gridLayout_2", "rear_widget"},        {"gridLayout_3", "front_widget"},
        {"gridLayout", "color_widget"},         {"gridLayout_4", "widget_7"},
        {"gridLayout_5", "widget_11"},
    };
    for (const auto& [name, owner] : layouts) {
        SCOPED_TRACE(name);
        const auto* layout = form.dialog.findChild<QLayout*>(QLatin1String(name));
        ASSERT_NE(layout, nullptr);
        ASSERT_NE(layout->parentWidget(), nullptr);
        EXPECT_EQ(layout->parentWidget()->objectName(), QLatin1String(owner));
        EXPECT_EQ(layout->parentWidget()->layout(), layout);
    }
}

TEST(FormNames, ButtonGroupsHaveTheirMembersAndExclusivity)
{
    struct Group
    {
        const char* name;
        bool exclusive;
        const char* members;
    };
    const Group groups[] = {
        {"buttonGroup_multistream", false,
         "front_bw front_gray front_color rear_bw rear_gray rear_color"},
        {"buttonGroup_mode_image", true,
         "color_back_image gray_back_image lineart_back_image gray_front_image color_front_image "
         "lineart_front_image test_button"},
        {"buttonGroup_multistream_dropout", false,
         "front_bw_dropout front_gray_dropout front_color_dropout rear_bw_dropout "
         "rear_gray_dropout rear_color_dropout"},
        {"buttonGroup_mode_crop", true,
         "pushButton_14 pushButton_16 pushButton_18 pushButton_17 pushButton_13 pushButton_15"},
        {"buttonGroup_range", true, "horizontal_range vertical_range"},
        {"buttonGroup_preview", true,
         "pushButton_9 pushButton_7 pushButton_8 pushButton_10 pushButton_11 pushButton_12"},
        {"buttonGroup_Vertical", true, "horizontal_range_preview vertical_range_preview"},
        {"buttonGroup_rotate_two_side", true, "rotation_book rotation_fanfold"},
    };
    Form form;
    EXPECT_EQ(form.dialog.findChildren<QButtonGroup*>().size(), int(std::size(groups)));
    for (const Group& expected : groups) {
        SCOPED_TRACE(expected.name);
        const auto* group = form.dialog.findChild<QButtonGroup*>(QLatin1String(expected.name));
        ASSERT_NE(group, nullptr);
        EXPECT_EQ(group->parent(), &form.dialog);
        EXPECT_EQ(group->exclusive(), expected.exclusive);
        QStringList names;
        for (const QAbstractButton* button : group->buttons()) {
            names.append(button->objectName());
        }
        names.sort();
        QStringList wanted = QString::fromUtf8(expected.members).split(QLatin1Char(' '));
        wanted.sort();
        EXPECT_EQ(names.join(QLatin1Char(' ')).toStdString(),
                  wanted.join(QLatin1Char(' ')).toStdString());
    }
}
