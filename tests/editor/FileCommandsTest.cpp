// Saving, saving under a new name, the question before closing, and exports.
#include "EditorFixture.h"
#include "document/LayoutFile.h"
#include "document/TextField.h"
#include "editor/CommandIds.h"
#include "host/Toolkit.h"
#include "view/QtWindowHandle.h"

#include <fstream>
#include <iterator>

namespace {

std::string Contents(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class FileCommands : public EditorTest {
protected:
    std::intptr_t AskToClose()
    {
        return toolkit::SendMessage(HandleOf(editor), WM_OSC_CANCLOSE, 0, 0);
    }
};

TEST_F(FileCommands, SaveWritesTheLayoutAndAFailedSaveSaysSoAndKeepsTheChanges)
{
    Open();
    Command(ID_OSCEDITOR_ADDPAGE);
    const std::string path = folder / "Show.VornOsc";
    CopyTextField(editor->layoutPath, path);
    Command(ID_FILE_SAVE);
    EXPECT_EQ(Contents(path), WriteLayoutFile(editor->project, &basics));
    EXPECT_EQ(editor->modified, 0);
    EXPECT_TRUE(basics.errors.empty());

    const std::string unwritable = folder / "no such folder/Show.VornOsc";
    CopyTextField(editor->layoutPath, unwritable);
    editor->modified = 1;
    Command(ID_FILE_SAVE);
    EXPECT_EQ(editor->modified, 1);
    ASSERT_EQ(basics.errors.size(), 1u);
    EXPECT_NE(basics.errors[0].find(unwritable), std::string::npos) << basics.errors[0];
    EXPECT_NE(basics.errors[0].find("Save As"), std::string::npos) << basics.errors[0];
}

TEST_F(FileCommands, SaveAsProposesTheDataFolderForANewLayoutAndTheLayoutsOwnPlaceLater)
{
    Open();
    SaveDialogSeen seen;
    editor->runDialog = Choosing("", &seen);
    Command(ID_FILE_SAVE_AS);
    EXPECT_EQ(seen.title, "Save OSC Layout As...");
    EXPECT_EQ(seen.folder, basics.dataFolder + "/OSC");
    EXPECT_TRUE(std::filesystem::is_directory(basics.dataFolder + "/OSC"));
    EXPECT_EQ(seen.name, "New.vornosc");
    EXPECT_EQ(seen.filter, "Vorn OSC Layout (*.VORNOSC)");
    EXPECT_EQ(seen.suffix, "vornosc");
    EXPECT_TRUE(seen.confirmsOverwrite);
    EXPECT_STREQ(editor->layoutPath, "New") << "a cancelled dialog changes nothing";

    editor->modified = 1;
    const std::string path = folder / "Live.VornOsc";
    editor->runDialog = Choosing(path);
    Command(ID_FILE_SAVE_AS);
    EXPECT_EQ(editor->layoutPath, path);
    EXPECT_EQ(editor->modified, 0);
    EXPECT_EQ(hostWindow.frame->title, "Live - OSC Editor");
    EXPECT_EQ(Contents(path).substr(0, 4), "KLYF");

    editor->runDialog = Choosing("", &seen);
    Command(ID_FILE_SAVE_AS);
    EXPECT_EQ(seen.folder, folder.path().string());
    EXPECT_EQ(seen.name, "Live.VornOsc");
}

TEST_F(FileCommands, APathLongerThan255BytesIsRefusedWithAMessageNotCut)
{
    const std::string longFolder = folder / (std::string(150, 'f') + '/' + std::string(150, 'g'));
    std::filesystem::create_directories(longFolder);
    const std::string longPath = longFolder + "/Show.VornOsc";
    std::ofstream(longPath) << "KLYF";
    ASSERT_NE(Open(longPath.c_str()), nullptr);
    EXPECT_STREQ(editor->layoutPath, "New");
    ASSERT_EQ(basics.errors.size(), 1u);
    EXPECT_NE(basics.errors[0].find("255 bytes"), std::string::npos);

    editor->runDialog = Choosing(longPath);
    editor->modified = 1;
    Command(ID_FILE_SAVE_AS);
    EXPECT_STREQ(editor->layoutPath, "New");
    EXPECT_EQ(editor->modified, 1);
    EXPECT_EQ(basics.errors.size(), 2u);
}

TEST_F(FileCommands, TheCloseQuestionsAnswersDiscardSaveOrKeepTheLayoutOpen)
{
    const struct {
        const char* path;
        int answer;
        std::intptr_t result;
        int modifiedAfter;
        bool saved;
    } cases[] = {
        {"Show.VornOsc", 3, 0, 0, false},  // don't save
        {"Show.VornOsc", 4, 0, 0, true},   // save
        {"Show.VornOsc", 2, 1, 0, false},  // cancel: the layout stays open
        {"Show.VornOsc", 1, 0, 1, false},  // any other answer
        {"", 4, 0, 1, false},              // no path: Save As, cancelled
    };
    Open();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.answer);
        const std::string path = *c.path != '\0' ? folder / c.path : std::string();
        std::filesystem::remove(path.empty() ? folder / "none" : path);
        CopyTextField(editor->layoutPath, path);
        bool askedSaveAs = false;
        editor->runDialog = [&askedSaveAs](QDialog&) { return askedSaveAs = true, 0; };
        basics.saveAnswer = c.answer;
        basics.saveQuestions = 0;

        editor->modified = 0;
        EXPECT_EQ(AskToClose(), 0);
        EXPECT_EQ(basics.saveQuestions, 0) << "an unchanged layout closes without a question";

        editor->modified = 1;
        EXPECT_EQ(AskToClose(), c.result);
        EXPECT_EQ(editor->modified, c.modifiedAfter);
        EXPECT_EQ(!path.empty() && std::filesystem::exists(path), c.saved);
        EXPECT_EQ(askedSaveAs, path.empty());
    }
}

TEST_F(FileCommands, ExportsProposeTheLayoutsNameInTheirDataFolderAndWriteTheirFormat)
{
    const struct {
        int command;
        const char* title;
        const char* subfolder;
        const char* filter;
        const char* suffix;
        const char* start;
    } cases[] = {
        {ID_OSCEDITOR_EXPORTASTOUCHOSCFILE, "Export As TouchOSC File...", "TouchOSC",
         "TouchOSC File (*.touchosc)", "touchosc", "PK"},
        {ID_OSCEDITOR_EXPORTASLEMURFILE, "Export As Lemur File...", "Lemur", "Lemur File (*.jzml)",
         "jzml", "<JZML>"},
    };
    Open();
    CopyTextField(editor->layoutPath, "/elsewhere/Show.VornOsc");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.title);
        SaveDialogSeen seen;
        const std::string target = folder / (std::string("Show.") + c.suffix);
        editor->runDialog = Choosing(target, &seen);
        Command(c.command);
        EXPECT_EQ(seen.title, c.title);
        EXPECT_EQ(seen.folder, basics.dataFolder + "/OSC/" + c.subfolder);
        EXPECT_EQ(seen.name, std::string("Show.") + c.suffix);
        EXPECT_EQ(seen.filter, c.filter);
        EXPECT_EQ(seen.suffix, c.suffix);
        EXPECT_EQ(Contents(target).substr(0, std::string(c.start).size()), c.start);
        EXPECT_EQ(editor->modified, 0);
    }
}

}  // namespace
