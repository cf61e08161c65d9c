// The editor window in its frame: opening, title, page list, the command
// table's rules and keys, and the messages between it and its host.
#include "EditorFixture.h"
#include "document/ControlClipboard.h"
#include "document/TextField.h"
#include "editor/CommandIds.h"
#include "editor/EditorGeometry.h"
#include "editor/ModuleEntry.h"
#include "host/Toolkit.h"
#include "view/QtWindowHandle.h"

#include <QApplication>
#include <QListWidget>
#include <QMenu>
#include <QTest>
#include <QTimer>

namespace {

TEST_F(EditorTest, OpensInAFrameFromTheHostWithTheMenuAndKeysInTheHostWindowsRightHalf)
{
    ASSERT_NE(Open(), nullptr);
    const HostRequest& request = hostWindow.lastRequest;
    EXPECT_EQ(request.words[0], kRequestOpenEditor);
    EXPECT_EQ(request.words[kRequestMenuWord], reinterpret_cast<std::intptr_t>(hMenu));
    EXPECT_EQ(request.words[kRequestAcceleratorsWord],
              reinterpret_cast<std::intptr_t>(AcceleratorsOSC));
    EXPECT_EQ(basics.allocArguments, (std::vector<int>{4, 0, 0, 0}));
    ASSERT_NE(hostWindow.frame, nullptr);
    EXPECT_EQ(hostWindow.frame->editor, editor);
    EXPECT_EQ(hostWindow.frame->title, "New - OSC Editor");
    EXPECT_EQ(hostWindow.frame->geometry(), QRect(600, 0, 1196 - 600, 675));
    EXPECT_FALSE(hostWindow.frame->windowIcon().isNull());
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(editor->geometry(), hostWindow.frame->contentsRect());
}

TEST_F(EditorTest, OpeningFailsQuietlyWithoutTheFileOrAFrameAndWithoutAParentMakesNoWindow)
{
    EXPECT_EQ(Open((folder / "missing.VornOsc").c_str()), nullptr);
    EXPECT_EQ(hostWindow.lastRequest.words[0], 0) << "no frame is asked for a missing file";

    hostWindow.answer = TestHostWindow::Answer::kNoFrame;
    EXPECT_EQ(Open(), nullptr);

    hostWindow.answer = TestHostWindow::Answer::kNotAWindow;
    EXPECT_EQ(Open(), nullptr);
    EXPECT_TRUE(hostWindow.notAWindowClosed);
    EXPECT_EQ(hostWindow.notAWindow, nullptr) << "the frame is destroyed";

    auto* lone = static_cast<TVornOSCEditor*>(ObjectOf(VornOSCEditor(nullptr, nullptr)));
    ASSERT_NE(lone, nullptr);
    EXPECT_EQ(lone->parentWidget(), nullptr);
    EXPECT_FALSE(lone->isVisible());
    EXPECT_EQ(lone->host, &basics);
    delete lone;
}

TEST(FramePlacement, AFrameWithoutASizeTakesTheRightHalfShortOfTheEdgesElseWhereItStood)
{
    EXPECT_EQ(FramePlacement({}, {0, 0, 1001, 803}), (CRect{500, 0, 997, 603}));
    EXPECT_EQ(FramePlacement({10, 20, 10, 300}, {0, 0, 800, 600}), (CRect{400, 0, 796, 450}));
    EXPECT_EQ(FramePlacement({10, 20, 110, 21}, {0, 0, 800, 600}), (CRect{10, 20, 110, 21}));
}

TEST(ViewPlacement, TheCanvasIsCentredRightOfTheListWhenTheScreenFitsElseAtTheStripAndTop)
{
    const struct {
        int cx, cy, sw, sh;
        CRect expected;
    } cases[] = {
        {1000, 1200, 768, 1024, {216, 88, 984, 1112}},  // fits both ways
        {968, 1024, 768, 1024, {200, 0, 968, 1024}},    // fits exactly
        {967, 1023, 768, 1024, {200, 0, 967, 1023}},    // one short each way
        {150, 500, 320, 480, {200, 10, 150, 490}},      // narrower than the strip
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.cx);
        EXPECT_EQ(ViewPlacement(c.cx, c.cy, c.sw, c.sh), c.expected);
    }
}

TEST_F(EditorTest, TheTitleIsTheFileNameWithoutTheLayoutSuffixInAnyCaseUnlessTheHostTitlesItself)
{
    Open();
    const struct {
        const char* path;
        int hostAnswer;
        const char* title;
    } cases[] = {
        {"/shows/Song.VORNOSC", 0, "Song - OSC Editor"},
        {"/shows/Song.vornosc.bak", 0, "Song.vornosc.bak - OSC Editor"},
        {"/shows/.VornOsc", 0, ".VornOsc - OSC Editor"},
        {"/shows/", 0, "New - OSC Editor"},
        {"/shows/Other.VornOsc", 1, "unchanged"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        hostWindow.frame->title = "unchanged";
        basics.titleAnswer = c.hostAnswer;
        CopyTextField(editor->layoutPath, c.path);
        HostRequest request;
        request.words[0] = kRequestSetTitle;
        toolkit::SendMessage(HandleOf(editor), WM_OSC_HOSTREQUEST, 0,
                             reinterpret_cast<std::intptr_t>(&request));
        EXPECT_EQ(hostWindow.frame->title, c.title);
    }
}

TEST_F(EditorTest, HostRequestsAnswerTheHelpTopicSplitThePathSaveAndMarkChanged)
{
    Open();
    HostRequest request;
    const auto send = [&](unsigned message, std::intptr_t code) {
        request.words[0] = code;
        return toolkit::SendMessage(HandleOf(editor), message, 0,
                                    reinterpret_cast<std::intptr_t>(&request));
    };
    EXPECT_EQ(send(WM_OSC_HOSTREQUEST, kRequestHelpTopic), 17016);

    char folderPart[256] = "x", namePart[256] = "x";
    request.words[kRequestFolderWord] = reinterpret_cast<std::intptr_t>(folderPart);
    request.words[kRequestNameWord] = reinterpret_cast<std::intptr_t>(namePart);
    CopyTextField(editor->layoutPath, "/shows/Song.VornOsc");
    send(WM_OSC_HOSTREQUEST, kRequestSplitPath);
    EXPECT_STREQ(folderPart, "/shows");
    EXPECT_STREQ(namePart, "Song.VornOsc");

    EXPECT_EQ(editor->modified, 0);
    send(WM_OSC_SETTITLE, 0);
    EXPECT_EQ(editor->modified, 1);

    // A layout never saved is saved under the name New in the current folder.
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    CopyTextField(editor->layoutPath, "New");
    send(WM_OSC_HOSTREQUEST, kRequestSave);
    std::filesystem::current_path(here);
    EXPECT_TRUE(std::filesystem::exists(folder / "New"));
    EXPECT_EQ(editor->modified, 0);
}

TEST_F(EditorTest, AddPageNamesItAfterThePageCountAppendsOneItemAndShowsIt)
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
}

TEST_F(EditorTest, RemovePageNeedsTwoPagesAndMarksTheLayoutChangedEvenWhenRefused)
{
    Open();
    EXPECT_FALSE(Enabled(ID_OSCEDITOR_REMOVEPAGE));
    Command(ID_OSCEDITOR_ADDPAGE);
    editor->modified = 0;
    EXPECT_TRUE(Enabled(ID_OSCEDITOR_REMOVEPAGE));
    AnswerNextMessageBox(QMessageBox::No);
    Command(ID_OSCEDITOR_REMOVEPAGE);
    EXPECT_EQ(editor->project.pages.size(), 2u);
    EXPECT_EQ(editor->modified, 1);
    AnswerNextMessageBox(QMessageBox::Yes);
    Command(ID_OSCEDITOR_REMOVEPAGE);
    EXPECT_EQ(editor->project.pages.size(), 1u);
    EXPECT_EQ(editor->pageList.count(), 1);
}

TEST_F(EditorTest, ClickingAPageShowsItAndAClickThatLeavesNoneSelectedSelectsTheCurrentAgain)
{
    Open();
    Command(ID_OSCEDITOR_ADDPAGE);
    QListWidget& list = editor->pageList;
    const auto click = [&](int row, Qt::KeyboardModifiers modifiers) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers,
                          list.visualItemRect(list.item(row)).center());
    };
    click(0, {});
    EXPECT_EQ(editor->project.currentPage, 0);
    click(0, Qt::ControlModifier);
    EXPECT_EQ(editor->project.currentPage, 0);
    ASSERT_EQ(list.selectedItems().size(), 1);
    EXPECT_EQ(list.row(list.selectedItems().front()), 0);
}

TEST_F(EditorTest, MenuItemsFollowTheSelectionTheClipboardThePagesAndTheSavedState)
{
    Open();
    const auto enabledWith = [&](int selected, int id) {
        editor->project.CurrentPage()->controls.clear();
        for (int i = 0; i < std::max(selected, 1); ++i)
            Add(10 + 50 * i, 50, 40, 40, i < selected);
        return Enabled(id);
    };
    for (int id : {ID_EDIT_CUT, ID_EDIT_COPY, ID_EDIT_CLEAR, ID_SETCOLOR_RED, ID_SETCOLOR_PINK}) {
        SCOPED_TRACE(id);
        EXPECT_FALSE(enabledWith(0, id));
        EXPECT_TRUE(enabledWith(1, id));
    }
    EXPECT_TRUE(enabledWith(1, ID_OSCEDITOR_PROPERTIES));
    EXPECT_FALSE(enabledWith(2, ID_OSCEDITOR_PROPERTIES));
    for (int id : {ID_OSCEDITOR_SELECTALL, ID_OSCEDITOR_TOFRONT, ID_OSCEDITOR_TOBACK}) {
        EXPECT_TRUE(enabledWith(0, id));
        editor->project.CurrentPage()->controls.clear();
        EXPECT_FALSE(Enabled(id));
    }

    ClearClipboard();
    EXPECT_FALSE(Enabled(ID_EDIT_PASTE));
    enabledWith(1, ID_EDIT_COPY);
    Command(ID_EDIT_COPY);
    EXPECT_TRUE(Enabled(ID_EDIT_PASTE));

    // Save needs a change and a name of its own.
    editor->modified = 1;
    EXPECT_FALSE(Enabled(ID_FILE_SAVE)) << "never saved";
    CopyTextField(editor->layoutPath, folder / "a.VornOsc");
    EXPECT_TRUE(Enabled(ID_FILE_SAVE));
    editor->modified = 0;
    EXPECT_FALSE(Enabled(ID_FILE_SAVE));
    for (int id :
         {ID_FILE_SAVE_AS, ID_OSCEDITOR_ADDPAGE, ID_OSCEDITOR_SEARCHANDREPLACE, ID_HELP_FINDER})
        EXPECT_TRUE(Enabled(id)) << id;

    EXPECT_FALSE(Checked(ID_OSCTESTMODE));
    Command(ID_OSCTESTMODE);
    EXPECT_TRUE(Checked(ID_OSCTESTMODE));
    Command(ID_OSCTESTMODE);
    EXPECT_FALSE(Checked(ID_OSCTESTMODE));
    EXPECT_EQ(editor->modified, 0) << "test mode changes nothing";
}

TEST_F(EditorTest, EditingCommandsMarkTheLayoutChangedAndTheOthersDoNot)
{
    Open();
    const struct {
        int id;
        bool changes;
        const char* after;  // the selected control's x y w h colour
    } cases[] = {
        {ID_EDIT_COPY, false, "100 100 40 40 5"},
        {ID_OSCEDITOR_SELECTALL, false, "100 100 40 40 5"},
        {ID_LEFT, true, "99 100 40 40 5"},
        {ID_RIGHT, true, "101 100 40 40 5"},
        {ID_UP, true, "100 99 40 40 5"},
        {ID_DOWN, true, "100 101 40 40 5"},
        {ID_CTLLEFT, true, "100 100 39 40 5"},
        {ID_CTLRIGHT, true, "100 100 41 40 5"},
        {ID_CTLUP, true, "100 100 40 39 5"},
        {ID_CTLDOWN, true, "100 100 40 41 5"},
        {ID_SETCOLOR_RED, true, "100 100 40 40 0"},
        {ID_SETCOLOR_PINK, true, "100 100 40 40 8"},
        {ID_OSCEDITOR_TOFRONT, true, "100 100 40 40 5"},
        {ID_OSCEDITOR_TOBACK, true, "100 100 40 40 5"},
        {ID_EDIT_PASTE, true, "8 48 40 40 5"},
        {ID_EDIT_CUT, true, "none"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.id);
        editor->project.CurrentPage()->controls.clear();
        Add(100, 100, 40, 40, true).color = 5;
        editor->modified = 0;
        Command(c.id);
        EXPECT_EQ(editor->modified, c.changes ? 1 : 0);
        std::string after = "none";
        for (const auto& control : editor->project.CurrentPage()->controls) {
            if (control->selected && after == "none")
                after = std::to_string(control->x) + ' ' + std::to_string(control->y) + ' ' +
                        std::to_string(control->width) + ' ' + std::to_string(control->height) +
                        ' ' + std::to_string(control->color);
        }
        EXPECT_EQ(after, c.after);
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

TEST_F(EditorTest, OkInThePageDialogMarksChangedAndScrollsTheCanvasHome)
{
    Open();
    editor->view.scrollY = 40;
    editor->runDialog = [](QDialog&) { return int{QDialog::Accepted}; };
    Command(ID_OSCEDITOR_PAGEPROPERTIES);
    EXPECT_EQ(editor->modified, 1);
    EXPECT_EQ(editor->view.scrollY, 0);
    EXPECT_EQ(editor->view.geometry().left(), 200);
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
