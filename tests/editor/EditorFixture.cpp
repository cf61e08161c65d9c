#include "EditorFixture.h"

#include "document/ControlClipboard.h"
#include "document/LayoutFile.h"
#include "document/TextField.h"
#include "editor/CommandIds.h"
#include "editor/ModuleEntry.h"
#include "host/Toolkit.h"
#include "view/EditGeometry.h"
#include "view/QtWindowHandle.h"
#include "view/ScrollGeometry.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <sstream>

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

json EditorCases(const char* key)
{
    return Cases(DATA_DIR "/editor.json", key);
}

namespace {

const json kNames = EditorCases("names");          // of commands, requests and messages
const json kMenuItems = EditorCases("menuItems");  // whose enabled state is shown
const std::vector<std::string> kEdges = {"top", "bottom", "left", "right"};
const std::vector<std::string> kBarActions = {"", "line+", "line-", "page+", "page-"};

// The module's menu item of id, after the editor's rules ran as before a menu opens.
QAction* Item(TVornOSCEditor* editor, int id, QMenu* menu = hMenu)
{
    if (menu == hMenu)
        toolkit::SendMessage(HandleOf(editor), WM_INITMENUPOPUP,
                             reinterpret_cast<std::intptr_t>(menu), 0);
    for (QAction* action : menu->actions()) {
        QAction* found = action->menu() != nullptr ? Item(editor, id, action->menu()) : action;
        if (found != nullptr && found->data().toInt() == id)
            return found;
    }
    return nullptr;
}

QPushButton* Button(QDialog& dialog, QDialogButtonBox::StandardButton which)
{
    return dialog.findChild<QDialogButtonBox*>()->button(which);
}

// Types text key by key. A character that no key of QTest's stands for comes
// as a key event that carries only its text, as from an input method.
void Type(QWidget* widget, const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x80) {
            QTest::keyClick(widget, c.toLatin1());
            continue;
        }
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent key(type, Qt::Key_unknown, Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(widget, &key);
        }
    }
}

// What a field shows: a line's text or a list's choice.
QString Shown(const QWidget* widget)
{
    if (const auto* line = qobject_cast<const QLineEdit*>(widget))
        return line->text();
    if (const auto* list = qobject_cast<const QComboBox*>(widget))
        return list->currentText();
    return u"(not a field)"_s;
}

// Steps: "OK", "Cancel", a click on a box ("name"), typing ("name=text") or
// what a field must show as the dialog opens ("name?text").
void Play(QDialog& dialog, const QString& script)
{
    for (const QString& step : script.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        if (step.contains(u'?')) {
            EXPECT_EQ(Shown(dialog.findChild<QWidget*>(step.section(u'?', 0, 0))),
                      step.section(u'?', 1))
                << step.toStdString();
            continue;
        }
        QWidget* widget = step == u"OK"_s ? Button(dialog, QDialogButtonBox::Ok)
                          : step == u"Cancel"_s
                              ? Button(dialog, QDialogButtonBox::Cancel)
                              : dialog.findChild<QWidget*>(step.section(u'=', 0, 0));
        if (widget == nullptr)
            return ADD_FAILURE() << "no widget for " << step.toStdString();
        // A click lands near the left edge: a check box answers only on its box and caption.
        if (!step.contains(u'='))
            QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(4, widget->height() / 2));
        else if (qobject_cast<QLineEdit*>(widget) != nullptr)
            QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        Type(widget, step.section(u'=', 1));
    }
}

}  // namespace

EditorTest::EditorTest()
{
    VornOSCEditor_Initialize();
    basics = TestBasics();
    basics.hostWindow = HandleOf(&hostWindow);
    QApplication::instance()->installEventFilter(&hostWindow);
    fs::current_path(folder.path());
    hostWindow.resize(1300, 900);  // the frame is wider than the editor
    hostWindow.show();
    QApplication::setActiveWindow(&hostWindow);
    editor = static_cast<TVornOSCEditor*>(ObjectOf(VornOSCEditor(HandleOf(&hostWindow), nullptr)));
    QObject::connect(&user_, &QTimer::timeout, [this] { Reply(); });
    user_.start(0);
    editor->view.installEventFilter(&painted_);
}

EditorTest::~EditorTest()
{
    fs::current_path(startFolder_);
    Search = search_, Replace = replace_, inName = inName_, inCommand = inCommand_;
}

std::intptr_t EditorTest::Request(std::intptr_t code, const void* word8, const void* word9,
                                  std::intptr_t word1)
{
    HostRequest request;
    request.words[0] = code;
    request.words[1] = word1;
    request.words[8] = reinterpret_cast<std::intptr_t>(word8);
    request.words[9] = reinterpret_cast<std::intptr_t>(word9);
    return toolkit::SendMessage(HandleOf(editor), WM_OSC_HOSTREQUEST, 0,
                                reinterpret_cast<std::intptr_t>(&request));
}

void EditorTest::PlayCase(const json& c)
{
    SCOPED_TRACE(c["layout"].dump());
    Lay(c["layout"]);
    int number = 0;
    for (const json& step : c["steps"]) {
        SCOPED_TRACE("step " + std::to_string(++number) + ": " + step[0].get<std::string>());
        Do(step[0]);
        Expect(step[1]);
    }
}

void EditorTest::Lay(const json& layout)
{
    for (const auto& entry : fs::directory_iterator(folder.path()))
        fs::remove_all(entry);
    // A host may have no data folder: the editor's folders are then the current folder's.
    basics.dataFolder = layout.value("dataFolder", folder / "data");
    if (!basics.dataFolder.empty())
        fs::create_directory(basics.dataFolder);
    ClearClipboard();
    basics.saveAnswer = layout.value("saveAnswer", 3);
    basics.titleAnswer = layout.value("titleAnswer", 0);
    basics.saveQuestions = 0;
    basics.errors.clear();
    OSCProject& project = editor->project = OSCProject();
    project.pages.clear();
    for (const json& name : layout.value("pages", json::array({"Page 1"}))) {
        OSCPage& page = *project.pages.emplace_back(std::make_unique<OSCPage>());
        CopyTextField(page.name, BytesOf(name.get<std::string>()));
        for (const json& control : layout.value("controls", json::array()))
            AddControl(page, control);
    }
    project.currentPage = layout.value("current", 0);
    editor->UpdateListbox();
    CopyTextField(editor->layoutPath, BytesOf(layout.value("path", "New")));
    editor->modified = layout.value("modified", 0);
    editor->history = EditHistory();
    if (editor->modified != 0)
        editor->history.MarkNeverSaved();
    if (const json memory = layout.value("memory", json()); !memory.is_null()) {
        Search = memory[0].get<std::string>(), Replace = memory[1].get<std::string>();
        inName = memory[2], inCommand = memory[3];
    }
    editor->view.testMode = 0;
    editor->view.showGrid = editor->view.snapToGrid = 0;
    editor->OnCommand(ID_VIEW_ACTUALSIZE);
    kept_.clear();
    held_ = {};
    keys_.clear();
    Do("size 1024 768");
    hostWindow.frame->title.clear();
    editor->runDialog = Playing({});
    Expect(json::object());  // forgets what the set-up showed
}

void EditorTest::Do(const std::string& spelled)
{
    const std::string step = BytesOf(spelled);
    std::istringstream words(step);
    std::string verb, rest;
    QPoint at, to;
    std::getline(words >> verb >> std::ws, rest);
    std::istringstream(rest) >> at.rx() >> at.ry() >> to.rx() >> to.ry();
    const auto has = [&rest](const char* word) { return rest.find(word) != std::string::npos; };
    Qt::KeyboardModifiers keys;
    keys.setFlag(Qt::ShiftModifier, has("Shift"))
        .setFlag(Qt::ControlModifier, has("Ctrl"))
        .setFlag(Qt::AltModifier, has("Alt"));
    const QPoint beside(100, editor->height() - 5);  // in the grey below the page list
    TVornOSCView& view = editor->view;
    if (verb == "press" || verb == "drag")
        Mouse(QEvent::MouseButtonPress, at, has("Right") ? Qt::RightButton : Qt::LeftButton, keys);
    if (verb == "double")  // the press that comes first changes nothing here
        Mouse(QEvent::MouseButtonDblClick, at, Qt::LeftButton, {});
    if (verb == "drag")  // moves on to where it is released
        at = to;
    if (verb == "move" || verb == "drag")
        Mouse(QEvent::MouseMove, at, Qt::NoButton, {});
    if (verb == "release" || verb == "drag" || verb == "double")
        Mouse(QEvent::MouseButtonRelease, at, Qt::LeftButton, keys);
    if (verb == "command") {
        toolkit::SendMessage(HandleOf(editor), WM_COMMAND, kNames[rest], 0);
    } else if (verb == "request") {
        std::string name, path;
        std::istringstream(rest) >> name >> path;
        // The device to set is a number; any other argument is a path.
        if (name == "setdevice" || name == "grid")
            answer_ = Request(kNames[name], nullptr, nullptr, std::stoi(path));
        else
            answer_ = Request(kNames[name], path.empty() ? nullptr : path.c_str());
    } else if (verb == "state") {  // a value the application's preview set: page, control, value
        const ControlValue value{at.x(), at.y(), std::stoi(rest.substr(rest.rfind(' ') + 1))};
        answer_ = Request(kNames["state"], nullptr, &value);
    } else if (verb == "message") {
        answer_ = toolkit::SendMessage(HandleOf(editor), kNames[rest], 0, 0);
    } else if (verb == "key") {  // pressed and held: a key acts on its press
        const QKeyCombination key = QKeySequence(QString::fromStdString(rest))[0];
        QTest::keyPress(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
    } else if (step == "editor click") {
        QTest::mouseClick(editor, Qt::LeftButton, {}, beside);
    } else if (step == "editor double") {
        QTest::mouseDClick(editor, Qt::LeftButton, {}, beside);
    } else if (verb == "editor") {
        editor->resize(at.x(), at.y());
    } else if (verb == "list") {
        const QListWidget& list = editor->pageList;
        QTest::mouseClick(list.viewport(), Qt::LeftButton, keys,
                          list.visualItemRect(list.item(at.x())).center());
    } else if (verb == "right") {
        keys_ += rest;
        QTest::mousePress(editor, Qt::RightButton, {}, beside);
    } else if (verb == "answer") {
        keys_ += rest[0];
    } else if (verb == "keep") {
        kept_[rest] = StateOfLayout();
    } else if (verb == "dialog") {
        editor->runDialog = Playing(QString::fromStdString(rest));
    } else if (verb == "choose") {
        editor->runDialog = Choosing(rest.empty() ? rest : fs::absolute(rest).string());
    } else if (verb == "accept") {
        editor->runDialog = Choosing({}, true);
    } else if (verb == "write") {  // a layout file, in new folders
        fs::create_directories(fs::path(rest).parent_path());
        WriteWholeFile(rest, "KLYF");
    } else if (verb == "open") {
        editor = static_cast<TVornOSCEditor*>(
            ObjectOf(VornOSCEditor(HandleOf(&hostWindow), rest.c_str())));
    } else if (verb == "size") {
        const CRect client = view.ClientRect();
        view.resize(at.x() + view.width() - client.Width(),
                    at.y() + view.height() - client.Height());
    } else if (verb == "bar") {
        QScrollBar* bar = rest[0] == 'h' ? view.HorizontalBar() : view.VerticalBar();
        std::istringstream menu(rest.substr(2));
        std::string word;
        int along = 0;
        if (menu >> word >> along && word == "menu") {  // the bar's own context menu
            std::getline(menu >> std::ws, menuItem_);
            const QPoint on = rest[0] == 'h' ? QPoint(along, 5) : QPoint(5, along);
            QContextMenuEvent event(QContextMenuEvent::Mouse, on, bar->mapToGlobal(on));
            QCoreApplication::sendEvent(bar, &event);
        } else {
            const auto action = std::find(kBarActions.begin(), kBarActions.end(), rest.substr(2));
            bar->triggerAction(QAbstractSlider::SliderAction(action - kBarActions.begin()));
        }
    } else if (verb == "wheel") {
        QWheelEvent wheel(QPointF(200, 200), view.mapToGlobal(QPointF(200, 200)), {}, at,
                          Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view, &wheel);
    } else if (verb == "thumb") {  // as the window's own bars ask, naming no bar
        view.OnHScroll(kThumbTrack, at.x(), nullptr);
        view.OnVScroll(kThumbTrack, at.y(), nullptr);
    } else if (!verb.empty() &&
               std::string(" press drag double move release ").find(' ' + verb + ' ') ==
                   std::string::npos) {
        ADD_FAILURE() << "no such step: " << step;
    }
    QCoreApplication::sendPostedEvents();
}

void EditorTest::Mouse(QEvent::Type type, QPoint at, Qt::MouseButton button,
                       Qt::KeyboardModifiers keys)
{
    // Every event carries the buttons held since their press, as in a drag.
    held_ = type == QEvent::MouseButtonRelease ? held_ & ~button : held_ | button;
    QMouseEvent event(type, QPointF(at), editor->view.mapToGlobal(QPointF(at)), button, held_,
                      keys);
    QCoreApplication::sendEvent(&editor->view, &event);
}

void EditorTest::Reply()
{
    QWidget* menu = QApplication::activePopupWidget();
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (menu == nullptr && box == nullptr)
        return;
    shown_.push_back(menu != nullptr ? "menu"
                                     : (box->windowTitle() + u": "_s + box->text()).toStdString());
    if (auto* items = qobject_cast<QMenu*>(menu); items != nullptr && !menuItem_.empty()) {
        // Down the menu to the item of that text, then Return.
        const QString text = QString::fromStdString(std::exchange(menuItem_, {}));
        for (int step = 0; step < items->actions().size(); ++step) {
            QTest::keyClick(items, Qt::Key_Down);
            if (items->activeAction() != nullptr && items->activeAction()->text() == text)
                return QTest::keyClick(items, Qt::Key_Return);
        }
        ADD_FAILURE() << "no menu item " << text.toStdString();
    }
    const char key = keys_.empty() ? '\0' : keys_[0];
    keys_.erase(0, 1);
    if (menu != nullptr)
        return key != '\0' ? QTest::keyClick(menu, key) : QTest::keyClick(menu, Qt::Key_Escape);
    if (QAbstractButton* button = box->button(key == 'Y' ? QMessageBox::Yes : QMessageBox::No))
        return button->click();
    box->reject();
}

void EditorTest::Expect(const json& wanted)
{
    const OSCProject& project = editor->project;
    const TVornOSCView& view = editor->view;
    const auto Place = [](const QWidget* w) {
        return json{w->x(), w->y(), w->width(), w->height()};
    };
    const auto cursor = view.cursor().shape();
    char folderPart[256] = "x", namePart[256] = "x";  // the parts the host asks for
    Request(kRequestSplitPath, folderPart, namePart);
    json seen = {{"modified", editor->modified},
                 {"path", Relative(editor->layoutPath)},
                 {"split", std::string(folderPart) + '|' + namePart},
                 {"title", hostWindow.frame->title},
                 {"current", project.currentPage},
                 {"screen", {project.device, project.orientation}},
                 {"view", Place(&view)},
                 {"scroll", {view.scrollX, view.scrollY, view.scrollXMax, view.scrollYMax}},
                 {"bars",
                  {view.HorizontalBar()->value(), view.VerticalBar()->value(),
                   view.HorizontalBar()->isEnabled(), view.VerticalBar()->isEnabled()}},
                 {"barPlaces", {Place(view.HorizontalBar()), Place(view.VerticalBar())}},
                 {"memory", Search + '/' + Replace + ' ' + std::to_string(inName) +
                                std::to_string(inCommand)},
                 {"testMode", view.testMode},
                 {"grab", QWidget::mouseGrabber() == &view},
                 {"cursor", cursor == Qt::SizeVerCursor   ? "up-down"
                            : cursor == Qt::SizeHorCursor ? "left-right"
                            : cursor == Qt::ArrowCursor   ? "arrow"
                                                          : "other"},
                 {"host", std::exchange(hostWindow.received, json::array())},
                 {"questions", basics.saveQuestions},
                 {"errors", json::array()},
                 {"files", Files()},
                 {"answer", std::exchange(answer_, json())},
                 {"shown", std::exchange(shown_, json::array())}};
    QApplication::processEvents();  // the canvas paints what it was asked to
    const CRect client = view.ClientRect();
    for (const QRect& r :
         std::exchange(painted_.region, {}) & QRect(0, 0, client.Width(), client.Height()))
        seen["painted"].push_back({r.x(), r.y(), r.width(), r.height()});
    for (const std::string& error : basics.errors)
        seen["errors"].push_back(Relative(error));
    for (const auto& page : project.pages) {
        seen["pages"].push_back(page->name);
        for (const auto& control : page->controls) {
            seen["controls"].push_back(Describe(*control));
            seen[std::string(control->name)] = {control->x, control->y, control->width,
                                                control->height};
            if (control->selected && page.get() == project.CurrentPage())
                seen["selected"].push_back(control->name);
        }
    }
    for (int row = 0; row < editor->pageList.count(); ++row) {
        seen["list"].push_back(editor->pageList.item(row)->text().toStdString());
        if (editor->pageList.item(row)->isSelected())
            seen["row"].push_back(row);
    }
    // Reading the rules sets the menu's items, so they are read only when asked.
    if (wanted.contains("enabled") || wanted.contains("checked") || wanted.contains("undo")) {
        seen["checked"] = Item(editor, ID_OSCTESTMODE)->isChecked();
        for (const int id : {ID_EDIT_UNDO, ID_EDIT_REDO}) {
            const QAction* item = Item(editor, id);
            seen["undo"].push_back(item->text().toStdString() + (item->isEnabled() ? "" : " (off)"));
        }
        for (const json& item : kMenuItems) {
            if (Item(editor, kNames[item.get<std::string>()])->isEnabled())
                seen["enabled"].push_back(item);
        }
    }
    const std::string state = StateOfLayout();
    for (const auto& [name, kept] : kept_) {
        if (kept == state)
            seen["as"].push_back(name);
    }
    if (view.movingSelection)
        seen["state"].push_back("moving");
    if (view.rubberBanding)
        seen["state"].push_back("banding");
    if (view.resizeEdge != kNoResize)
        seen["state"].push_back("resizing " + kEdges.at(view.resizeEdge - 2));
    if (view.activeControl != nullptr)
        seen["state"].push_back("operating " + std::string(view.activeControl->name));
    seen = SpellAll(seen);
    for (const auto& [key, value] : wanted.items()) {
        if (key != "pixels" && key != "editorPixels") {
            EXPECT_EQ(seen.value(key, json::array()), value) << key;
        }
    }
    // [x, y, colour, why] in the canvas, or in the whole editor around it
    const QImage image = wanted.contains("pixels") ? Paint() : QImage();
    for (const json& pixel : wanted.value("pixels", json::array()))
        EXPECT_EQ(ColourAt(image, pixel[0], pixel[1]), pixel[2]) << pixel;
    const QImage whole = wanted.contains("editorPixels") ? editor->grab().toImage() : QImage();
    for (const json& pixel : wanted.value("editorPixels", json::array()))
        EXPECT_EQ(ColourAt(whole, pixel[0], pixel[1]), pixel[2]) << pixel;
}

std::string EditorTest::StateOfLayout() const
{
    return LayoutState(editor->project, &basics);
}

QImage EditorTest::Paint()
{
    QImage image(editor->view.size(), QImage::Format_RGB32);
    image.fill(Qt::magenta);  // what the canvas leaves unpainted must not pass for black
    // The page alone first, as the canvas repaints it when its bars stay, then the bars.
    const CRect client = editor->view.ClientRect();
    const QRegion page(0, 0, client.Width(), client.Height());
    editor->view.render(&image, {}, page);
    if (const QRegion bars = QRegion(editor->view.rect()) - page; !bars.isEmpty())
        editor->view.render(&image, bars.boundingRect().topLeft(), bars);
    return image;
}

DialogRunner EditorTest::Playing(const QString& script)
{
    return [this, script](QDialog& dialog) {
        bool okOff = false;
        QTimer::singleShot(0, &dialog, [&dialog, &okOff, script] {
            Play(dialog, script);
            const QPushButton* ok = Button(dialog, QDialogButtonBox::Ok);
            okOff = ok != nullptr && !ok->isEnabled();
            if (dialog.isVisible())
                dialog.reject();
        });
        const int result = dialog.exec();
        shown_.push_back(dialog.metaObject()->className() + std::string(okOff ? ", OK off" : ""));
        return result;
    };
}

DialogRunner EditorTest::Choosing(const std::string& path, bool asProposed)
{
    return [this, path, asProposed](QDialog& dialog) {
        auto& files = dynamic_cast<QFileDialog&>(dialog);
        const QStringList selected = files.selectedFiles() << QString();
        const bool overwrites = files.testOption(QFileDialog::DontConfirmOverwrite);
        shown_.push_back(Relative(QStringList{files.windowTitle(), files.directory().absolutePath(),
                                              QFileInfo(selected[0]).fileName(),
                                              files.nameFilters().join(u';'), files.defaultSuffix(),
                                              overwrites ? u"overwrites"_s : u"confirms"_s}
                                      .join(u'|')
                                      .toStdString()));
        if (asProposed)
            return int{QDialog::Accepted};
        if (path.empty())
            return int{QDialog::Rejected};
        // As a user types it: Qt shows bytes that are not UTF-8 replaced.
        files.selectFile(QString::fromStdString(path));
        return int{QDialog::Accepted};
    };
}

// What TEMP holds: folders, files holding the layout as it stands, and the
// first two bytes of any other file.
json EditorTest::Files() const
{
    json files = json::object();
    const std::string layout = WriteLayoutFile(editor->project, &basics);
    for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
        const std::string bytes =
            entry.is_directory() ? "" : ReadWholeFile(entry.path()).value_or("");
        json& seen = files[fs::relative(entry.path(), folder.path()).string()];
        seen = entry.is_directory() ? "folder"
               : bytes == layout    ? "this layout"
                                    : bytes.substr(0, 2);
    }
    return files;
}

std::string EditorTest::Relative(std::string text) const
{
    for (std::size_t at; (at = text.find(folder.path().string())) != std::string::npos;)
        text.replace(at, folder.path().string().size(), "TEMP");
    return text;
}

bool EditorTest::PaintedRegion::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Paint)
        region += static_cast<QPaintEvent*>(event)->region();
    return false;
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
