#include "AppFixture.h"

#include <QAbstractButton>
#include <QApplication>
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
    for (EditorFrame* frame : window->Frames()) {
        static_cast<TVornOSCEditor*>(frame->Editor())->modified = 0;
        delete frame;
    }
}

std::string AppTest::CopyOfExample(const std::string& name)
{
    const std::string path = folder / name;
    std::filesystem::copy_file(EXAMPLES_DIR "/Demo.VornOsc", path);
    return path;
}

TVornOSCEditor& AppTest::Editor() const
{
    EditorFrame* frame = window->ActiveFrame();
    if (frame == nullptr)
        throw std::runtime_error("no editor is open");
    return *static_cast<TVornOSCEditor*>(frame->Editor());
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
