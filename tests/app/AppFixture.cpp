#include "AppFixture.h"

#include "document/LayoutFile.h"
#include "host/Messages.h"
#include "tests/support/FakeHost.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

ModuleLibrary& Module()
{
    static ModuleLibrary module;
    static const bool loaded = [] {
        std::string error;
        if (!module.Load(VORNOSC_MODULE, error))
            throw std::runtime_error(error);
        return true;
    }();
    (void)loaded;
    return module;
}

// The menu item of command id and the menu it is in.
std::pair<QMenu*, QAction*> FindCommand(QMenu* menu, const QList<QAction*>& actions, int id)
{
    for (QAction* action : actions) {
        if (QMenu* submenu = action->menu()) {
            if (auto found = FindCommand(submenu, submenu->actions(), id); found.second)
                return found;
        } else if (action->data().toInt() == id) {
            return {menu, action};
        }
    }
    return {};
}

}  // namespace

AppTest::AppTest()
{
    QStandardPaths::setTestModeEnabled(true);
    QSettings().clear();
    window = std::make_unique<MainWindow>(Module(), OscTarget{"127.0.0.1", receiver.Port()});
    window->show();
    QApplication::setActiveWindow(window.get());
}

AppTest::~AppTest()
{
    // Whatever is still open goes without questions.
    // Deleted, not closed: nothing is asked.
    qDeleteAll(window->Frames());
}

std::string AppTest::CopyOfExample(const std::string& name)
{
    const std::string path = folder / name;
    std::filesystem::copy_file(EXAMPLES_DIR "/Demo.VornOsc", path);
    return path;
}

EditorFrame& AppTest::Frame() const
{
    EditorFrame* frame = window->ActiveFrame();
    if (frame == nullptr)
        throw std::runtime_error("no editor is open");
    return *frame;
}

QWidget& AppTest::Canvas() const
{
    for (QWidget* child : Frame().Editor()->findChildren<QWidget*>()) {
        if (QLatin1String(child->metaObject()->className()) == QLatin1String("TVornOSCView"))
            return *child;
    }
    throw std::runtime_error("the editor has no canvas");
}

std::intptr_t AppTest::Ask(HostRequest& request) const
{
    return Frame().Send(WM_OSC_HOSTREQUEST, 0, reinterpret_cast<std::intptr_t>(&request));
}

bool AppTest::Modified() const
{
    HostRequest request;
    request.words[0] = kRequestIsModified;
    return Ask(request) != 0;
}

std::unique_ptr<OSCProject> AppTest::Layout() const
{
    const std::string copy = folder / "layout-now.VornOsc";
    HostRequest request;
    request.words[0] = kRequestWriteCopy;
    request.words[kRequestCopyPathWord] = reinterpret_cast<std::intptr_t>(copy.c_str());
    auto layout = std::make_unique<OSCProject>();
    FakeHost host;
    if (Ask(request) == 0 || ReadLayoutFile(Contents(copy), *layout, &host) != 0)
        throw std::runtime_error("the editor gave no copy of its layout");
    return layout;
}

void AppTest::AnswerFileDialog(const std::string& path)
{
    auto* timer = new QTimer(window.get());
    timer->setObjectName(QStringLiteral("answer"));
    QObject::connect(timer, &QTimer::timeout, timer, [timer, path] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible())
            return;
        if (path.empty()) {
            timer->deleteLater();
            dialog->reject();
            return;
        }
        // Typed as a user types it: selecting a file races with the dialog
        // reading its folder in the background.
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (name == nullptr)
            return;
        timer->deleteLater();
        name->setText(QString::fromStdString(path));
        static_cast<QDialog*>(dialog)->accept();
    });
    timer->start(10);
}

void AppTest::PickModuleCommand(int id)
{
    const auto [menu, action] = FindCommand(nullptr, window->menuBar()->actions(), id);
    if (action == nullptr)
        throw std::runtime_error("the menus have no command " + std::to_string(id));
    // A user opens the menu first, which brings its items up to date.
    Q_EMIT menu->aboutToShow();
    action->trigger();
}

void AppTest::Answer(std::vector<QMessageBox::StandardButton> answers)
{
    // Polled, since each box opens only after the previous answer is handled.
    *unanswered += static_cast<int>(answers.size());
    auto* timer = new QTimer(window.get());
    timer->setObjectName(QStringLiteral("answer"));
    QObject::connect(timer, &QTimer::timeout, timer,
                     [timer, answers, left = unanswered, texts = answeredTexts]() mutable {
                         auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                         if (box == nullptr || !box->isVisible())
                             return;
                         const QMessageBox::StandardButton answer = answers.front();
                         answers.erase(answers.begin());
                         --*left;
                         texts->append(box->text());
                         if (answers.empty())
                             timer->deleteLater();
                         box->button(answer)->click();
                     });
    timer->start(10);
}

void AppTest::CancelAnswers()
{
    qDeleteAll(window->findChildren<QTimer*>(QStringLiteral("answer")));
    *unanswered = 0;
}

std::string Contents(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}
