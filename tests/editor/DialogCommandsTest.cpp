// The property dialogs of a control and of a page, and search and replace, as
// a user plays them in the editor.
#include "EditorFixture.h"
#include "document/ControlTables.h"
#include "document/TextField.h"
#include "editor/CommandIds.h"
#include "editor/SearchMemory.h"
#include "tests/support/TestControls.h"

#include <QDialog>
#include <QListWidget>

#include <sstream>

namespace {

using namespace Qt::StringLiterals;
using nlohmann::json;

// An open editor. Every test leaves the module's search memory as it found
// it, so that each sees the values of a freshly loaded module.
class DialogCommands : public EditorTest {
protected:
    DialogCommands() { Open(); }
    ~DialogCommands() override
    {
        Search = search, Replace = replace, inName = name, inCommand = command;
    }
    // Plays script on the dialog of command; whether the layout was changed.
    bool Played(int id, const QString& script, std::function<void(QDialog&)> check = {})
    {
        editor->modified = 0;
        editor->runDialog = Playing(script, check);
        Command(id);
        return editor->modified != 0;
    }

    const std::string search = Search, replace = Replace;
    const int name = inName, command = inCommand;
};

TEST_F(DialogCommands, PropertiesEditExactlyOneSelectedControlAndWithNoneSelectedThePage)
{
    const char* const expected[] = {"OSCPageEditorDlg 1", "OSCParameterEditorDlg 1", " 0"};
    for (int selected = 0; selected < 3; ++selected) {
        editor->project.CurrentPage()->controls.clear();
        for (int i = 0; i < 3; ++i)
            Add(10 + 50 * i, 50, 40, 40, i < selected);
        QString shown;
        editor->runDialog = [&shown](QDialog& dialog) {
            shown = QString::fromLatin1(dialog.metaObject()->className());
            return int{QDialog::Accepted};
        };
        editor->modified = 0;
        Command(ID_OSCEDITOR_PROPERTIES);
        EXPECT_EQ(shown.toStdString() + ' ' + std::to_string(editor->modified), expected[selected]);
    }
}

TEST_F(DialogCommands, OkStoresTheTextsAsAtoiReadsThemCutToTheirFieldsAndAKnobKeepsEqualSides)
{
    for (const json& c : EditorCases("controlProperties")) {
        const QString script = QString::fromStdString(c["script"]);
        SCOPED_TRACE(script.left(40).toStdString());
        editor->project.CurrentPage()->controls.clear();
        OSCControl& control = Add(10, 50, 40, 60, true, "Vol");
        control.minValue = -5, control.maxValue = 300, control.color = c.value("color", 1);
        control.type = c["type"];
        CopyTextField(control.command, "/vol");
        EXPECT_EQ(Played(ID_OSCEDITOR_PROPERTIES, script), script.endsWith(u"OK"_s));
        std::ostringstream s;
        s << control.x << ',' << control.y << ' ' << control.width << 'x' << control.height << ' '
          << control.minValue << ".." << control.maxValue << " type " << int{control.type}
          << " color " << int{control.color} << ' ' << TextOf(control.name) << ' '
          << TextOf(control.command);
        EXPECT_EQ(s.str(), c["after"]);
    }
}

TEST_F(DialogCommands, PageOkAlwaysChangesTheLayoutAndScrollsHomeAndRenamesOnlyTheCurrentPage)
{
    editor->project.AddPage();
    for (const json& c : EditorCases("pageProperties")) {
        const QString script = QString::fromStdString(c["script"]);
        const std::string after = c["after"];  // name, device, orientation
        SCOPED_TRACE(script.left(40).toStdString());
        CopyTextField(editor->project.pages[1]->name, "Drums");
        editor->UpdateListbox();
        editor->project.device = editor->project.orientation = 1;
        editor->view.scrollY = 40;
        const bool ok = script.endsWith(u"OK"_s);
        EXPECT_EQ(Played(ID_OSCEDITOR_PAGEPROPERTIES, script), ok);
        EXPECT_EQ(std::string(TextOf(editor->project.pages[1]->name)) + ' ' +
                      std::to_string(editor->project.device) + ' ' +
                      std::to_string(editor->project.orientation),
                  after);
        EXPECT_EQ(editor->pageList.item(1)->text().toStdString() + ' ' +
                      editor->pageList.item(0)->text().toStdString(),
                  after.substr(0, after.size() - 4) + " Page 1");
        EXPECT_EQ(editor->view.scrollY, ok ? 0 : 40);
        EXPECT_EQ(editor->view.geometry().left(), 200);
    }
}

std::string Memory()
{
    return Search + '/' + Replace + ' ' + std::to_string(inName) + std::to_string(inCommand);
}

TEST_F(DialogCommands, SearchFirstOffersEmptyTextsInNamesAndCommandsAndOkOnlyWithSearchTextAndABox)
{
    EXPECT_EQ(Memory(), "/ 11");
    for (const json& c : EditorCases("searchOk")) {
        SCOPED_TRACE(c["script"].get<std::string>());
        Search = Replace = "", inName = inCommand = 1;
        Played(ID_OSCEDITOR_SEARCHANDREPLACE, QString::fromStdString(c["script"]),
               [&](QDialog& dialog) { EXPECT_EQ(OkEnabled(dialog), c["ok"]); });
    }
}

TEST_F(DialogCommands, SearchRemembersTheAnswersWhateverTheButtonAndOkReplacesOnEveryPage)
{
    editor->project.AddPage();
    const auto texts = [&] {
        std::string texts;
        for (const auto& page : editor->project.pages)
            texts.append(TextOf(page->controls[0]->name))
                .append(" ")
                .append(TextOf(page->controls[0]->command))
                .append(";");
        return texts;
    };
    for (const json& c : EditorCases("searchMemory")) {
        const QString script = QString::fromStdString(c["script"]);
        SCOPED_TRACE(script.left(60).toStdString());
        Search = "Old", Replace = "New", inName = inCommand = 1;
        for (int round = 0; round < 2; ++round) {  // the next use starts from the answers
            for (const auto& page : editor->project.pages) {
                page->controls.clear();
                AddControl(*page, 0, 0, 40, 40, 1, false, "Fader 1");
                CopyTextField(page->controls[0]->command, "/Fader/1");
            }
            EXPECT_EQ(Played(ID_OSCEDITOR_SEARCHANDREPLACE, round == 0 ? script : u"OK"_s),
                      round == 1 || script.endsWith(u"OK"_s));
            EXPECT_EQ(texts(), c["after"]);
            EXPECT_EQ(Memory(), c["memory"]);
        }
    }
}

}  // namespace
