// Saving, saving under a new name, the question before closing, and exports.
#include "EditorFixture.h"
#include "document/LayoutFile.h"
#include "document/TextField.h"
#include "editor/CommandIds.h"
#include "host/Toolkit.h"
#include "view/QtWindowHandle.h"

#include <fstream>

namespace {

using nlohmann::json;

TEST_F(EditorTest, SaveWritesTheLayoutAndAFailedSaveSaysSoAndKeepsTheChanges)
{
    Open();
    Command(ID_OSCEDITOR_ADDPAGE);
    const std::string path = folder / "Show.VornOsc";
    CopyTextField(editor->layoutPath, path);
    Command(ID_FILE_SAVE);
    EXPECT_EQ(ReadWholeFile(path), WriteLayoutFile(editor->project, &basics));
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

// Save As proposes the host's data folder for a layout never saved and the
// layout's own place later; exports propose the layout's name in a folder of
// their own under the data folder, wherever the layout is.
TEST_F(EditorTest, SaveDialogsProposeTheirFolderAndNameAndWriteTheirFormatWhereChosen)
{
    Open();
    const auto placed = [&](std::string text) {
        for (const auto& [name, path] :
             {std::pair{"DATA", basics.dataFolder}, {"TEMP", folder.path().string()}}) {
            if (const auto at = text.find(name); at != std::string::npos)
                text.replace(at, 4, path);
        }
        return text;
    };
    for (const json& c : EditorCases("saveDialogs")) {
        SCOPED_TRACE(c["seen"].get<std::string>());
        const std::string before = placed(c["layout"]),
                          chosen = folder / c["chosen"].get<std::string>();
        const std::string title = hostWindow.frame->title;
        const bool saveAs = c["command"] == ID_FILE_SAVE_AS;
        std::string seen;
        CopyTextField(editor->layoutPath, before);
        editor->modified = 1;
        editor->runDialog = Choosing("", &seen);
        Command(c["command"]);
        EXPECT_EQ(seen, placed(c["seen"]));
        EXPECT_EQ(TextOf(editor->layoutPath), before) << "a cancelled dialog changes nothing";

        editor->runDialog = Choosing(chosen);
        Command(c["command"]);
        EXPECT_EQ(ReadWholeFile(chosen).value_or("").rfind(c["starts"].get<std::string>(), 0), 0u);
        EXPECT_EQ(editor->modified, saveAs ? 0 : 1);
        EXPECT_EQ(TextOf(editor->layoutPath), saveAs ? chosen : before);
        EXPECT_EQ(hostWindow.frame->title,
                  saveAs ? std::filesystem::path(chosen).stem().string() + " - OSC Editor" : title);
    }
    EXPECT_TRUE(std::filesystem::is_directory(basics.dataFolder + "/OSC/TouchOSC"));
    EXPECT_TRUE(std::filesystem::is_directory(basics.dataFolder + "/OSC/Lemur"));
}

TEST_F(EditorTest, APathLongerThan255BytesIsRefusedWithAMessageNotCut)
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

TEST_F(EditorTest, TheCloseQuestionsAnswersDiscardSaveOrKeepTheLayoutOpen)
{
    Open();
    for (const json& c : EditorCases("closeQuestion")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        const std::string path = c.value("named", true) ? folder / "Show" : "";
        std::filesystem::remove(folder / "Show");
        CopyTextField(editor->layoutPath, path);
        bool askedSaveAs = false;
        editor->runDialog = [&askedSaveAs](QDialog&) { return askedSaveAs = true, 0; };
        basics.saveAnswer = c["answer"];
        basics.saveQuestions = 0;
        const auto close = [&] {
            return toolkit::SendMessage(HandleOf(editor), WM_OSC_CANCLOSE, 0, 0);
        };

        editor->modified = 0;
        EXPECT_EQ(close(), 0);
        EXPECT_EQ(basics.saveQuestions, 0) << "an unchanged layout closes without a question";
        editor->modified = 1;
        EXPECT_EQ(close(), c["result"]);
        EXPECT_EQ(editor->modified, c["changed"]);
        EXPECT_EQ(std::filesystem::exists(folder / "Show"), c["saved"]);
        EXPECT_EQ(askedSaveAs, path.empty());
    }
}

}  // namespace
