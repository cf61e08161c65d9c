// The editor window in its frame: opening, title, page list, the command
// table's rules and keys, and the messages between it and its host.
#include "EditorFixture.h"
#include "document/ControlClipboard.h"
#include "document/LayoutFile.h"
#include "document/TextField.h"
#include "editor/CommandIds.h"
#include "editor/EditorGeometry.h"
#include "editor/ModuleEntry.h"
#include "host/Toolkit.h"
#include "view/QtWindowHandle.h"

#include <QApplication>
#include <QListWidget>
#include <QTest>
#include <QTimer>

namespace {

using nlohmann::json;

TEST_F(EditorTest, OpensShownFillingItsFrameBelowTheMenuBar)
{
    ASSERT_NE(Open(), nullptr);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(editor->geometry(), hostWindow.frame->contentsRect());
}

TEST(FramePlacement, AFrameWithoutASizeTakesTheRightHalfShortOfTheEdgesElseWhereItStood)
{
    const CRect host{0, 0, 800, 600}, half{400, 0, 796, 450};
    EXPECT_EQ(FramePlacement({}, {0, 0, 1001, 803}), (CRect{500, 0, 997, 603}));
    EXPECT_EQ(FramePlacement({10, 20, 10, 300}, host), half);
    EXPECT_EQ(FramePlacement({10, 20, 300, 20}, host), half);
    EXPECT_EQ(FramePlacement({10, 20, 11, 21}, host), (CRect{10, 20, 11, 21}));
}

TEST(ViewPlacement, TheCanvasIsCentredRightOfTheListWhenTheScreenFitsElseAtTheStripAndTop)
{
    for (const json& c : EditorCases("viewPlacements")) {
        const CRect r =
            ViewPlacement(c["client"][0], c["client"][1], c["screen"][0], c["screen"][1]);
        EXPECT_EQ(json({r.left, r.top, r.right, r.bottom}), c["view"]) << c["what"];
    }
}

TEST_F(EditorTest, TheTitleIsTheFileNameWithoutTheLayoutSuffixInAnyCaseUnlessTheHostTitlesItself)
{
    Open();
    for (const json& c : EditorCases("titles")) {
        hostWindow.frame->title = "unchanged";
        basics.titleAnswer = c.value("hostTitles", 0);
        CopyTextField(editor->layoutPath, c["path"].get<std::string>());
        HostRequest request;
        request.words[0] = kRequestSetTitle;
        toolkit::SendMessage(HandleOf(editor), WM_OSC_HOSTREQUEST, 0,
                             reinterpret_cast<std::intptr_t>(&request));
        EXPECT_EQ(hostWindow.frame->title, c["title"]) << c["path"];
    }
}

TEST_F(EditorTest, HostRequestsAnswerTheHelpTopicSplitThePathTellOfChangesSaveAndWriteCopies)
{
    Open();
    HostRequest request;
    const auto send = [&](std::intptr_t code, unsigned message = WM_OSC_HOSTREQUEST) {
        request.words[0] = code;
        return toolkit::SendMessage(HandleOf(editor), message, 0,
                                    reinterpret_cast<std::intptr_t>(&request));
    };
    EXPECT_EQ(send(kRequestHelpTopic), 17016);
    for (const auto& [path, split] : {std::pair{"/shows/Song.VornOsc", "/shows|Song.VornOsc"},
                                      {"/Song", "/|Song"},
                                      {"Song", "|Song"}}) {
        char folderPart[256] = "x", namePart[256] = "x";
        request.words[kRequestFolderWord] = reinterpret_cast<std::intptr_t>(folderPart);
        request.words[kRequestNameWord] = reinterpret_cast<std::intptr_t>(namePart);
        CopyTextField(editor->layoutPath, path);
        send(kRequestSplitPath);
        EXPECT_EQ(std::string(folderPart) + '|' + namePart, split);
    }

    EXPECT_EQ(send(kRequestIsModified), 0);
    send(0, WM_OSC_SETTITLE);
    EXPECT_EQ(send(kRequestIsModified), 1);
    const std::string copy = folder / "copy";
    request.words[kRequestCopyPathWord] = reinterpret_cast<std::intptr_t>(copy.c_str());
    EXPECT_EQ(send(kRequestWriteCopy), 1);
    EXPECT_EQ(ReadWholeFile(copy), WriteLayoutFile(editor->project, &basics));
    request.words[kRequestCopyPathWord] = 0;
    EXPECT_EQ(send(kRequestWriteCopy), 0);
    EXPECT_EQ(editor->modified, 1) << "a copy is no save";

    // A layout never saved is saved under the name New in the current folder.
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    CopyTextField(editor->layoutPath, "New");
    send(kRequestSave);
    std::filesystem::current_path(here);
    EXPECT_TRUE(std::filesystem::exists(folder / "New"));
    EXPECT_EQ(editor->modified, 0);
}

TEST_F(EditorTest,
       AddPageNamesThePageAfterTheCountRemovePageAsksButMarksChangedAnywayAndClicksShowAPage)
{
    Open();
    editor->project.AddPage();
    editor->project.AddPage();
    editor->UpdateListbox();
    Command(ID_OSCEDITOR_ADDPAGE);
    ASSERT_EQ(editor->project.pages.size(), 4u);
    EXPECT_STREQ(editor->project.pages[3]->name, "Page 4");
    EXPECT_EQ(editor->pageList.count(), 4);
    EXPECT_EQ(editor->pageList.item(3)->text(), QStringLiteral("Page 4"));
    EXPECT_EQ(editor->pageList.currentRow(), 3);
    EXPECT_EQ(editor->project.currentPage, 3);
    EXPECT_EQ(editor->modified, 1);

    editor->modified = 0;
    AnswerNextMessageBox(QMessageBox::No);
    Command(ID_OSCEDITOR_REMOVEPAGE);
    EXPECT_EQ(editor->project.pages.size(), 4u);
    EXPECT_EQ(editor->modified, 1);
    AnswerNextMessageBox(QMessageBox::Yes);
    Command(ID_OSCEDITOR_REMOVEPAGE);
    EXPECT_EQ(editor->project.pages.size(), 3u);
    EXPECT_EQ(editor->pageList.count(), 3);

    // A click shows its page; one that leaves no page selected selects the current one again.
    QListWidget& list = editor->pageList;
    for (const auto modifiers : {Qt::NoModifier, Qt::ControlModifier}) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers,
                          list.visualItemRect(list.item(0)).center());
        EXPECT_EQ(editor->project.currentPage, 0);
        ASSERT_EQ(list.selectedItems().size(), 1);
        EXPECT_EQ(list.row(list.selectedItems().front()), 0);
    }
}

TEST_F(EditorTest, MenuItemsFollowTheSelectionTheClipboardThePagesAndTheSavedState)
{
    Open();
    const json items = EditorCases("menuItems");
    for (const json& c : EditorCases("menuRules")) {
        ClearClipboard();
        editor->project.pages.resize(1);
        editor->project.currentPage = 0;
        if (c.value("pages", 1) == 2)
            editor->project.AddPage();
        editor->project.CurrentPage()->controls.clear();
        for (int i = 0; i < c.value("controls", 0); ++i)
            Add(10 + 50 * i, 50, 40, 40, i < c.value("selected", 0));
        if (c.value("copied", false))
            Command(ID_EDIT_COPY);
        editor->modified = c.value("modified", 0);
        CopyTextField(editor->layoutPath, c.value("path", "New"));
        json enabled = json::array();
        for (const json& item : items) {
            if (Item(item[1]).isEnabled())
                enabled.push_back(item[0]);
        }
        EXPECT_EQ(enabled, c["enabled"]) << c["what"];
    }
    EXPECT_FALSE(Item(ID_OSCTESTMODE).isChecked());
    Command(ID_OSCTESTMODE);
    EXPECT_TRUE(Item(ID_OSCTESTMODE).isChecked());
    Command(ID_OSCTESTMODE);
    EXPECT_FALSE(Item(ID_OSCTESTMODE).isChecked());
    EXPECT_EQ(editor->modified, 0) << "test mode changes nothing";
}

TEST_F(EditorTest, EditingCommandsMarkTheLayoutChangedAndTheOthersDoNot)
{
    Open();
    for (const json& c : EditorCases("editingCommands")) {
        editor->project.CurrentPage()->controls.clear();
        Add(100, 100, 40, 40, true).color = 5;
        editor->modified = 0;
        if (c.contains("answer"))
            AnswerNextMessageBox(c["answer"] == "Yes" ? QMessageBox::Yes : QMessageBox::No);
        Command(c["command"][1]);
        EXPECT_EQ(editor->modified != 0, c["changes"]) << c["command"];
        std::string after = "none";  // the first selected control's x y w h colour
        for (const auto& control : editor->project.CurrentPage()->controls) {
            if (control->selected && after == "none")
                after = std::to_string(control->x) + ' ' + std::to_string(control->y) + ' ' +
                        std::to_string(control->width) + ' ' + std::to_string(control->height) +
                        ' ' + std::to_string(control->color);
        }
        EXPECT_EQ(after, c["after"]) << c["command"];
    }
}

TEST_F(EditorTest, ArrowsMoveAndControlArrowsResizeOnlyWhileTheEditorHasTheKeyboard)
{
    Open();
    OSCControl& control = Add(100, 100, 40, 40, true);
    QApplication::setActiveWindow(&hostWindow);
    QTest::mouseClick(editor, Qt::LeftButton, {}, QPoint(100, editor->height() - 5));
    ASSERT_TRUE(editor->hasFocus());
    QTest::keyClick(editor, Qt::Key_Right);
    QTest::keyClick(editor, Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(control.x, 101);
    EXPECT_EQ(control.height, 41);
    EXPECT_EQ(editor->modified, 1);

    editor->pageList.setFocus();
    QTest::keyClick(&editor->pageList, Qt::Key_Right);
    EXPECT_EQ(control.x, 101);
}

TEST_F(EditorTest, AShortcutRunsItsCommandOnlyWhenTheRulesAllowItThen)
{
    Open();
    CopyTextField(editor->layoutPath, folder / "a.VornOsc");
    QApplication::setActiveWindow(&hostWindow);
    editor->setFocus();
    QTest::keyClick(editor, Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(std::filesystem::exists(folder / "a.VornOsc")) << "nothing to save";
    editor->modified = 1;
    QTest::keyClick(editor, Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(std::filesystem::exists(folder / "a.VornOsc"));
    EXPECT_EQ(editor->modified, 0);
}

TEST_F(EditorTest, ARightClickOpensMenu1000AndItsChoiceRunsInThisEditor)
{
    Open();
    QTimer::singleShot(0, [] {
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_P);  // Page
        QTimer::singleShot(0, [] {
            QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_A);  // Add Page
        });
    });
    QTest::mousePress(editor, Qt::RightButton, {}, QPoint(100, editor->height() - 5));
    EXPECT_EQ(editor->project.pages.size(), 2u);
}

TEST_F(EditorTest, ADoubleClickBesideTheCanvasEditsThePageAndOnAControlEditsTheControl)
{
    Open();
    Add(10, 50, 40, 40);
    QStringList shown;
    editor->runDialog = [&shown](QDialog& dialog) {
        shown << QString::fromLatin1(dialog.metaObject()->className());
        return int{QDialog::Rejected};
    };
    QTest::mouseDClick(editor, Qt::LeftButton, {}, QPoint(100, editor->height() - 5));
    const QPoint onControl = QPoint(30, 70) - QPoint(editor->view.scrollX, editor->view.scrollY);
    // A widget's double click in QTest lacks the press that comes first.
    QTest::mouseClick(&editor->view, Qt::LeftButton, {}, onControl);
    QTest::mouseDClick(&editor->view, Qt::LeftButton, {}, onControl);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(shown, (QStringList{QStringLiteral("OSCPageEditorDlg"),
                                  QStringLiteral("OSCParameterEditorDlg")}));
    EXPECT_EQ(editor->modified, 0);
}

TEST_F(EditorTest, TheFrameIsGreyWithADarkRingAroundTheCanvasAndABlackLineBesideTheList)
{
    Open();
    hostWindow.frame->resize(1400, 1000);
    const QImage image = editor->grab().toImage();
    const QRect view = editor->view.geometry();
    EXPECT_EQ(image.pixel(199, view.bottom()) & 0xFFFFFF, 0x000000u);
    EXPECT_EQ(image.pixel(view.left() - 1, view.top() + 5) & 0xFFFFFF, 0x0C0C0Cu);
    EXPECT_EQ(image.pixel(view.right() + 1, view.bottom() + 1) & 0xFFFFFF, 0x0C0C0Cu);
    EXPECT_EQ(image.pixel(198, editor->height() - 2) & 0xFFFFFF, 0x808080u);
}

}  // namespace
