#include "FakeHost.h"
#include "FakeToolkit.h"
#include "TestControls.h"
#include "TestFiles.h"
#include "document/ControlClipboard.h"
#include "document/ControlTables.h"
#include "document/EditHistory.h"
#include "document/LayoutFile.h"
#include "document/LayoutTools.h"
#include "document/NumberedText.h"
#include "document/OSCProject.h"
#include "document/ReceivedValues.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <map>
#include <string>

namespace {

using nlohmann::json;

std::string Names(const ControlList& controls)
{
    std::string names;
    for (const auto& control : controls)
        names += control->name;
    return names;
}

// The host of every edit, for the size limit mode.
FakeHost host;
// What the last value received set, and what the last duplicate did.
ValuesSet received;
Duplicated duplicated;

const std::map<std::string, AlignTo> kAlignments{
    {"left", AlignTo::kLeftEdges},          {"right", AlignTo::kRightEdges},
    {"top", AlignTo::kTops},                {"bottom", AlignTo::kBottoms},
    {"centre", AlignTo::kHorizontalCentres}, {"middle", AlignTo::kVerticalCentres}};

Along AlongOf(const json& word)
{
    return word == "across" ? Along::kHorizontal : Along::kVertical;
}

// ["Duplicate", count, stepX, stepY, "nac"]: numbering names, addresses and
// control numbers as the letters say; ["Duplicate"] alone: one copy beside.
CopyPlan PlanOf(const OSCProject& p, const json& s)
{
    if (s.size() == 1)
        return CopyBeside(*p.CurrentPage(), p.GetScreenW());
    const std::string numbering = s[4];
    return {s[1], s[2], s[3], numbering.find('n') != std::string::npos,
            numbering.find('a') != std::string::npos, numbering.find('c') != std::string::npos};
}

// The editing operations by name, with their arguments from a case's step.
using Operation = std::function<void(OSCProject&, const json& step)>;
const std::map<std::string, Operation> kOperations{
    {"ShiftRight", [](OSCProject& p, const json& s) { p.ShiftRight(s[1]); }},
    {"ShiftDown", [](OSCProject& p, const json& s) { p.ShiftDown(s[1]); }},
    {"ShiftLeft", [](OSCProject& p, const json& s) { p.ShiftLeft(s[1]); }},
    {"ShiftUp", [](OSCProject& p, const json& s) { p.ShiftUp(s[1]); }},
    {"SetColor", [](OSCProject& p, const json& s) { p.SetColor(s[1]); }},
    {"ToFront", [](OSCProject& p, const json&) { p.ToFront(); }},
    {"ToBack", [](OSCProject& p, const json&) { p.ToBack(); }},
    {"SelectAll", [](OSCProject& p, const json&) { p.SelectAll(); }},
    {"UnselectAll", [](OSCProject& p, const json&) { p.UnselectAll(); }},
    {"Clear", [](OSCProject& p, const json&) { p.Clear(); }},
    {"Cut", [](OSCProject& p, const json&) { p.Cut(); }},
    {"Copy", [](OSCProject& p, const json&) { p.Copy(); }},
    {"Paste", [](OSCProject& p, const json&) { p.Paste(); }},
    {"RemovePage", [](OSCProject& p, const json&) { p.RemovePage(); }},
    {"MoveSelected", [](OSCProject& p, const json& s) { p.MoveSelected(s[1], s[2]); }},
    {"ResizeW", [](OSCProject& p, const json& s) { p.ResizeW(s[1], &host); }},
    {"ResizeH", [](OSCProject& p, const json& s) { p.ResizeH(s[1], &host); }},
    {"SelectRange", [](OSCProject& p, const json& s) { p.SelectRange(s[1], s[2], s[3], s[4]); }},
    {"Add", [](OSCProject& p, const json& s) { AddControl(*p.CurrentPage(), s[1]); }},
    {"AddPage", [](OSCProject& p, const json&) { p.AddPage(); }},
    {"Align",
     [](OSCProject& p, const json& s) {
         AlignSelected(*p.CurrentPage(), kAlignments.at(s[1]), p.GetScreenW(), p.GetScreenH());
     }},
    {"Distribute",
     [](OSCProject& p, const json& s) {
         DistributeSelected(*p.CurrentPage(), AlongOf(s[1]), p.GetScreenW(), p.GetScreenH());
     }},
    {"SameSize",
     [](OSCProject& p, const json& s) {
         SameSizeSelected(*p.CurrentPage(), AlongOf(s[1]), p.GetScreenW(), p.GetScreenH());
     }},
    {"Duplicate",
     [](OSCProject& p, const json& s) {
         duplicated =
             DuplicateSelected(*p.CurrentPage(), PlanOf(p, s), p.GetScreenW(), p.GetScreenH());
     }},
    {"SetPageName",
     [](OSCProject& p, const json& s) { p.SetPageName(s[1].get<std::string>().c_str()); }},
    {"SetCurrentPage", [](OSCProject& p, const json& s) { p.currentPage = s[1]; }},
    {"SearchAndReplace",
     [](OSCProject& p, const json& s) {
         p.SearchAndReplace(s[1].get<std::string>(), s[2].get<std::string>(), s[3], s[4]);
     }},
    {"Receive",
     [](OSCProject& p, const json& s) {
         const ReceivedValue value = s[2] == "on"    ? ReceivedValue{ReceivedValue::kOn, 0}
                                     : s[2] == "off" ? ReceivedValue{ReceivedValue::kOff, 0}
                                     : s[2] == "nan" ? ReceivedValue{ReceivedValue::kNumber, NAN}
                                                     : ReceivedValue{ReceivedValue::kNumber, s[2]};
         received = SetValuesAt(p, s[1].get<std::string>(), value);
     }},
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

// A case's project and host before its steps.
void LayOut(const json& c, OSCProject& project)
{
    Toolkit().Reset();
    ClearClipboard();
    project.device = c.value("device", std::uint8_t{kIPhone});
    project.orientation = c.value("orientation", std::uint8_t{kVertical});
    host.sizeLimitMode = c.value("sizeLimitMode", 0);
    for (const json& row : c.value("page", json::array()))
        AddControl(*project.CurrentPage(), row);
    for (const int answer : c.value("answers", json::array()))
        Toolkit().answers.push_back(answer);
}

std::string StateOf(OSCProject& project)
{
    return LayoutState(project, &host);
}

}  // namespace

// Each case starts from one page on an iPhone held upright (320 by 480) unless
// it names another screen, takes its steps with the message boxes answered as
// listed (then No) and the host's size limit mode, and says what the screen,
// the page, the controls under points, the clipboard, the pages and the
// questions asked are afterwards.
TEST(Editing, EachEditLeavesTheProjectAndTheClipboardAsTheCaseSays)
{
    for (const json& c : Cases(DATA_DIR "/editing.json", "edits")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        OSCProject project;
        LayOut(c, project);
        for (const json& step : c["do"])
            kOperations.at(step[0])(project, step);

        if (c.contains("screen")) {
            EXPECT_EQ(json({project.GetScreenW(), project.GetScreenH()}), c["screen"]);
        }
        if (c.contains("after")) {
            json after = json::array();
            const json& expected = c["after"];
            for (const auto& control : project.CurrentPage()->controls)
                after.push_back(Describe(*control));
            EXPECT_EQ(after, expected);
            EXPECT_EQ(project.GetNumControls(), static_cast<int>(expected.size()));
            EXPECT_EQ(project.GetNumSelected(),
                      std::count_if(expected.begin(), expected.end(),
                                    [](const json& row) { return row.value("selected", false); }));
        }
        for (const json& point : c.value("hits", json::array())) {
            const OSCControl* hit = project.GetAt(point[0], point[1]);
            EXPECT_EQ(hit ? hit->name : "", point[2]) << point;
        }
        if (c.contains("duplicated")) {
            EXPECT_EQ(json({duplicated.done, duplicated.copiesThatFit}), c["duplicated"]);
        }
        if (c.contains("set")) {
            EXPECT_EQ(json({received.controls, received.onCurrentPage}), c["set"]);
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
    ClearClipboard();
}

// The same steps, each kept in a history when it changed what the file holds:
// undoing them all gives back, step by step, the state each found, and redoing
// them the state each left.
TEST(Editing, EachEditThatChangesTheFileIsAStepThatUndoesAndRedoesExactly)
{
    for (const json& c : Cases(DATA_DIR "/editing.json", "edits")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        OSCProject project;
        LayOut(c, project);
        EditHistory history;
        std::vector<std::pair<std::string, std::string>> states;  // before and after each step
        for (const json& step : c["do"]) {
            const LayoutSnapshot before = LayoutSnapshot::Of(project);
            const std::string stateBefore = StateOf(project);
            const std::string fileBefore = WriteLayoutFile(project, &host);
            kOperations.at(step[0])(project, step);
            LayoutChange change = LayoutChange::Between(before, project);
            const bool screenChanged =
                before.device != project.device || before.orientation != project.orientation;
            EXPECT_EQ(change.ChangesLayout(),
                      screenChanged || WriteLayoutFile(project, &host) != fileBefore)
                << step;
            if (change.ChangesLayout()) {
                history.Add(step[0], std::move(change));
                states.emplace_back(stateBefore, StateOf(project));
            }
        }
        for (auto state = states.rbegin(); state != states.rend(); ++state) {
            history.Undo(project);
            EXPECT_EQ(StateOf(project), state->first);
        }
        EXPECT_FALSE(history.CanUndo());
        EXPECT_TRUE(history.AtSavedState());
        for (const auto& [before, after] : states) {
            history.Redo(project);
            EXPECT_EQ(StateOf(project), after);
        }
        EXPECT_FALSE(history.CanRedo());
    }
    ClearClipboard();
}

// Steps of 100 moved controls each under a cap of about three: the oldest go,
// and with them the saved state, while the newest still undo. Resized, they
// are kept as small as moved, and a deletion as small as what it took.
TEST(Editing, AHistoryPastItsCapForgetsItsOldestStepsAndTheSavedStateAmongThem)
{
    OSCProject project;
    for (int i = 0; i < 100; ++i) {
        AddControl(*project.CurrentPage(), {{"at", {i, 0, 1, 1}}, {"selected", i % 2 == 0}});
        AddControl(*project.CurrentPage(), {{"at", {i, 100, 1, 1}}, {"type", "knob"}});
    }
    const auto ChangeAll = [&project](std::int16_t OSCControl::*field) {
        const LayoutSnapshot before = LayoutSnapshot::Of(project);
        for (const auto& control : project.CurrentPage()->controls)
            (*control).*field = static_cast<std::int16_t>((*control).*field + 1 + control->x % 2);
        return LayoutChange::Between(before, project);
    };
    const auto MoveAll = [&ChangeAll] { return ChangeAll(&OSCControl::y); };
    const std::size_t stepBytes = MoveAll().Bytes();
    EditHistory history(3 * stepBytes + stepBytes / 2);
    history.MarkSaved();
    std::vector<std::string> states{StateOf(project)};
    for (int step = 0; step < 5; ++step) {
        history.Add("Move", MoveAll());
        states.push_back(StateOf(project));
    }
    EXPECT_EQ(history.Steps(), 3u);
    EXPECT_LE(history.Bytes(), 3 * stepBytes + 3 * 4);
    for (int back = 1; back <= 3; ++back) {
        EXPECT_FALSE(history.AtSavedState());
        EXPECT_EQ(history.UndoName(), "Move");
        history.Undo(project);
        EXPECT_EQ(StateOf(project), states[5u - static_cast<std::size_t>(back)]);
    }
    EXPECT_FALSE(history.CanUndo());
    EXPECT_EQ(history.UndoName(), "");
    EXPECT_FALSE(history.AtSavedState());
    EXPECT_LE(ChangeAll(&OSCControl::width).Bytes(), stepBytes) << "a resize is kept as small";
    const LayoutSnapshot before = LayoutSnapshot::Of(project);
    project.CurrentPage()->controls.erase(project.CurrentPage()->controls.begin());
    EXPECT_LE(LayoutChange::Between(before, project).Bytes(), stepBytes + sizeof(OSCControl))
        << "a deletion keeps the control it took, not those after it";
}

TEST(Editing, NumberedCopiesCountOnFromTheLastNumberOfTheirTexts)
{
    for (const json& c : Cases(DATA_DIR "/editing.json", "numbered"))
        EXPECT_EQ(NumberedText(c[0].get<std::string>(), c[1], c[2]), c[3]) << c;
}
