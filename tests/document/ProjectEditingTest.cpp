#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TestControls.h"
#include "TestFiles.h"
#include "document/ControlClipboard.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <map>
#include <string>

namespace {

using nlohmann::json;

json EditingCases(const char* rule)
{
    return Cases(DATA_DIR "/editing.json", rule);
}

// A control as the cases write it: name, left, top, width, height, then type,
// selection and colour, which may be left out when 0, false and 0.
json Described(const OSCControl& c)
{
    return {c.name, c.x, c.y, c.width, c.height, c.type, c.selected != 0, c.color};
}
json Completed(json row)
{
    const json defaults = {0, false, 0};
    for (std::size_t i = row.size(); i < 8; ++i)
        row.push_back(defaults[i - 5]);
    return row;
}
void Put(OSCPage& page, const json& row)
{
    const json c = Completed(row);
    AddControl(page, c[1], c[2], c[3], c[4], c[5], c[6], c[0].get<std::string>().c_str()).color =
        c[7];
}

std::string Names(const ControlList& controls)
{
    std::string names;
    for (const auto& control : controls)
        names += control->name;
    return names;
}

// The host of every edit, for the size limit mode.
FakeHost host;

// The editing operations by name, with their arguments from a case's step.
using Operation = std::function<void(OSCProject&, const json& step)>;
const std::map<std::string, Operation> kOperations{
    {"MoveSelected", [](OSCProject& p, const json& s) { p.MoveSelected(s[1], s[2]); }},
    {"ShiftRight", [](OSCProject& p, const json& s) { p.ShiftRight(s[1]); }},
    {"ShiftDown", [](OSCProject& p, const json& s) { p.ShiftDown(s[1]); }},
    {"ShiftLeft", [](OSCProject& p, const json& s) { p.ShiftLeft(s[1]); }},
    {"ShiftUp", [](OSCProject& p, const json& s) { p.ShiftUp(s[1]); }},
    {"ResizeW", [](OSCProject& p, const json& s) { p.ResizeW(s[1], &host); }},
    {"ResizeH", [](OSCProject& p, const json& s) { p.ResizeH(s[1], &host); }},
    {"ToFront", [](OSCProject& p, const json&) { p.ToFront(); }},
    {"ToBack", [](OSCProject& p, const json&) { p.ToBack(); }},
    {"SetColor", [](OSCProject& p, const json& s) { p.SetColor(s[1]); }},
    {"SelectRange", [](OSCProject& p, const json& s) { p.SelectRange(s[1], s[2], s[3], s[4]); }},
    {"SelectAll", [](OSCProject& p, const json&) { p.SelectAll(); }},
    {"UnselectAll", [](OSCProject& p, const json&) { p.UnselectAll(); }},
    {"Clear", [](OSCProject& p, const json&) { p.Clear(); }},
    {"Cut", [](OSCProject& p, const json&) { p.Cut(); }},
    {"Copy", [](OSCProject& p, const json&) { p.Copy(); }},
    {"Paste", [](OSCProject& p, const json&) { p.Paste(); }},
    {"Add", [](OSCProject& p, const json& s) { Put(*p.CurrentPage(), s[1]); }},
    {"AddPage", [](OSCProject& p, const json&) { p.AddPage(); }},
    {"SetPageName",
     [](OSCProject& p, const json& s) { p.SetPageName(s[1].get<std::string>().c_str()); }},
    {"SetCurrentPage", [](OSCProject& p, const json& s) { p.currentPage = s[1]; }},
    {"RemovePage", [](OSCProject& p, const json&) { p.RemovePage(); }},
    {"HostRecords",
     [](OSCProject&, const json& s) {
         std::vector<_OSCParms> records(s.size());
         std::vector<const _OSCParms*> pointers;
         for (std::size_t i = 1; i < s.size(); ++i) {
             if (!s[i].is_null())
                 std::strcpy(records[i].name, s[i].get<std::string>().c_str());
             pointers.push_back(s[i].is_null() ? nullptr : &records[i]);
         }
         ExternalPasteToClipboard(pointers);
     }},
};

// A project on an iPhone held upright, 320 by 480.
struct Editing : testing::Test {
    OSCProject project;

    void SetUp() override
    {
        Toolkit().Reset();
        ClearClipboard();
        project.device = kIPhone;
        project.orientation = kVertical;
    }
    void TearDown() override { ClearClipboard(); }

    OSCPage& page() { return *project.CurrentPage(); }
};

}  // namespace

TEST_F(Editing, ScreenSizeFollowsDeviceAndOrientationAndSurvivesDamagedBytes)
{
    for (const json& c : EditingCases("screens")) {
        SCOPED_TRACE(c.dump());
        project.device = c["device"];
        project.orientation = c["orientation"];
        EXPECT_EQ(project.GetScreenW(), c["size"][0]);
        EXPECT_EQ(project.GetScreenH(), c["size"][1]);
    }
}

TEST_F(Editing, TheFrontMostControlUnderThePointerIsHitAndRightAndBottomEdgesLieOutside)
{
    AddControl(page(), 10, 20, 20, 20, kLabel, false, "a");
    AddControl(page(), 15, 25, 20, 20, kLabel, false, "b");
    for (const json& c : EditingCases("hits")) {
        SCOPED_TRACE(c.dump());
        const OSCControl* hit = project.GetAt(c["point"][0], c["point"][1]);
        EXPECT_EQ(hit ? hit->name : "", c["hit"]);
    }
}

// Each case starts from one page, takes its steps with the message boxes
// answered as listed (then No) and the host's size limit mode, and says what the page, the
// clipboard, the pages and the questions asked are afterwards.
TEST_F(Editing, EachEditLeavesThePageTheClipboardAndThePagesAsTheCaseSays)
{
    for (const json& c : EditingCases("edits")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        project = OSCProject();
        SetUp();
        host.sizeLimitMode = c.value("sizeLimitMode", 0);
        for (const json& row : c.value("page", json::array()))
            Put(page(), row);
        for (const int answer : c.value("answers", json::array()))
            Toolkit().answers.push_back(answer);
        for (const json& step : c["do"])
            kOperations.at(step[0])(project, step);

        if (c.contains("after")) {
            json after = json::array(), expected = json::array();
            for (const auto& control : page().controls)
                after.push_back(Described(*control));
            for (const json& row : c["after"])
                expected.push_back(Completed(row));
            EXPECT_EQ(after, expected);
            EXPECT_EQ(project.GetNumControls(), static_cast<int>(expected.size()));
            EXPECT_EQ(project.GetNumSelected(),
                      std::count_if(expected.begin(), expected.end(),
                                    [](const json& row) { return row[6]; }));
        }
        if (c.contains("clipboard")) {
            EXPECT_EQ(Names(*GetControlClipboard()), c["clipboard"]);
        }
        if (c.contains("pages")) {
            std::vector<std::string> names;
            for (const auto& p : project.pages)
                names.emplace_back(p->name);
            EXPECT_EQ(names, c["pages"]);
            EXPECT_EQ(project.currentPage, c["current"]);
        }
        json asked = json::array();
        for (const ShownMessageBox& box : Toolkit().messageBoxes)
            asked.push_back({box.text, box.caption, box.style});
        EXPECT_EQ(asked, c.value("asked", json::array()));
    }
}

// Case-sensitive, the first occurrence in each chosen field, on every page,
// cut to the field.
TEST_F(Editing, SearchAndReplaceChangesTheFirstOccurrenceInTheChosenFieldsOfEveryPage)
{
    std::strcpy(AddControl(page(), 0, 50, 10, 10, kLabel, false, "CtlCtl").command, "/ID1/Ctl1");
    project.AddPage();
    std::memset(AddControl(page(), 0, 50, 10, 10).name, 'x', 200);
    std::strcpy(page().controls[0]->command, "/ID2/Ctl2");

    project.SearchAndReplace("ctl", "C", true, true);
    project.SearchAndReplace("Ctl", "C", false, true);
    project.SearchAndReplace("x", std::string(100, 'y'), true, false);
    project.SearchAndReplace("/", "", false, false);
    EXPECT_STREQ(project.pages[0]->controls[0]->name, "CtlCtl");
    EXPECT_STREQ(project.pages[0]->controls[0]->command, "/ID1/C1");
    EXPECT_STREQ(project.pages[1]->controls[0]->command, "/ID2/C2");
    EXPECT_EQ(std::string(project.pages[1]->controls[0]->name),
              std::string(100, 'y') + std::string(155, 'x'));
}
