// Properties of a control and of a page, edited in their dialogs.
#include "DialogPlay.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "editor/PropertyCommands.h"

#include <QDialog>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

using namespace Qt::StringLiterals;

OSCControl& AddControl(OSCProject& project, int type, int color, bool selected)
{
    OSCControl& c = *project.CurrentPage()->controls.emplace_back(std::make_unique<OSCControl>());
    c.x = 10, c.y = 50, c.width = 40, c.height = 60, c.minValue = -5, c.maxValue = 300;
    c.type = static_cast<std::uint8_t>(type), c.color = static_cast<std::uint8_t>(color);
    c.selected = selected;
    CopyTextField(c.name, "Vol");
    CopyTextField(c.command, "/vol");
    return c;
}

std::string Summary(const OSCControl& c)
{
    std::ostringstream s;
    s << c.x << ',' << c.y << ' ' << c.width << 'x' << c.height << ' ' << c.minValue << ".."
      << c.maxValue << " type " << int{c.type} << " color " << int{c.color} << ' ' << TextOf(c.name)
      << ' ' << TextOf(c.command);
    return s.str();
}

TEST(ControlProperties, OnlyExactlyOneSelectedControlIsEditedAndNoneEditsThePage)
{
    const struct {
        int selected;
        ControlPropertiesOutcome outcome;
        int runs;
    } cases[] = {{0, ControlPropertiesOutcome::kEditPage, 0},
                 {1, ControlPropertiesOutcome::kChanged, 1},
                 {2, ControlPropertiesOutcome::kUnchanged, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.selected);
        OSCProject project;
        for (int i = 0; i < 3; ++i)
            AddControl(project, kFader, 0, i < c.selected);
        int runs = 0;
        const auto ok = [&runs](QDialog&) { return ++runs, int{QDialog::Accepted}; };
        EXPECT_EQ(EditControlProperties(project, ok), c.outcome);
        EXPECT_EQ(runs, c.runs);
    }
}

TEST(ControlProperties, OkStoresTheTextsAsAtoiReadsThemCutToTheirFieldsAndAKnobKeepsEqualSides)
{
    const QString a255(255, u'a'), b256(256, u'b');
    const struct {
        int type, color;
        QString script;
        std::string after;
    } cases[] = {
        {kFader, 1, u"OK"_s, "10,50 40x60 -5..300 type 1 color 1 Vol /vol"},
        {kFader, 1, u"type=Knob|OK"_s, "10,50 40x40 -5..300 type 2 color 1 Vol /vol"},
        {kKnob, 1, u"width=50|height=30|OK"_s, "10,50 30x30 -5..300 type 2 color 1 Vol /vol"},
        {kKnob, 1, u"width=-5|height=10|OK"_s, "10,50 -5x-5 -5..300 type 2 color 1 Vol /vol"},
        {kFader, 1, u"x=70000|y=32767|width=32768|minValue=70000|OK"_s,
         "4464,32767 -32768x60 70000..300 type 1 color 1 Vol /vol"},
        {kFader, 1, u"x=abc|y= 12ab|maxValue=-7|OK"_s, "0,12 40x60 -5..-7 type 1 color 1 Vol /vol"},
        {kFader, 1, u"x=70|name=X|type=Knob|Cancel"_s,
         "10,50 40x60 -5..300 type 1 color 1 Vol /vol"},
        {7, 9, u"OK"_s, "10,50 40x60 -5..300 type 255 color 255 Vol /vol"},
        {kLabel, 1, u"name="_s + a255 + u"|command="_s + b256 + u"|OK"_s,
         "10,50 40x60 -5..300 type 0 color 1 " + std::string(255, 'a') + ' ' +
             std::string(255, 'b')},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.script.left(40).toStdString());
        OSCProject project;
        OSCControl& control = AddControl(project, c.type, c.color, true);
        EXPECT_EQ(EditControlProperties(project, Playing(c.script)),
                  c.script.endsWith(u"OK"_s) ? ControlPropertiesOutcome::kChanged
                                             : ControlPropertiesOutcome::kUnchanged);
        EXPECT_EQ(Summary(control), c.after);
    }
}

TEST(PageProperties, OkAlwaysModifiesAndRenamesOnlyWhenTheNameDiffersExactly)
{
    const struct {
        QString script;
        bool modified, renamed;
        std::string after;
    } cases[] = {
        {u"OK"_s, true, false, "Drums 1 1"},
        {u"pageName=drums|OK"_s, true, true, "drums 1 1"},
        {u"device=iPh|OK"_s, true, false, "Drums 0 1"},
        {u"orientation=Ver|OK"_s, true, false, "Drums 1 0"},
        {u"pageName="_s + QString(256, u'p') + u"|OK"_s, true, true,
         std::string(255, 'p') + " 1 1"},
        {u"pageName=X|device=iPh|Cancel"_s, false, false, "Drums 1 1"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.script.left(40).toStdString());
        OSCProject project;
        CopyTextField(project.AddPage()->name, "Drums");
        const PagePropertiesOutcome outcome = EditPageProperties(project, Playing(c.script));
        EXPECT_EQ(outcome.modified, c.modified);
        EXPECT_EQ(outcome.renamed, c.renamed);
        EXPECT_EQ(std::string(TextOf(project.pages[1]->name)) + ' ' +
                      std::to_string(project.device) + ' ' + std::to_string(project.orientation),
                  c.after);
        EXPECT_EQ(TextOf(project.pages[0]->name), "Page 1");
    }
}

}  // namespace
