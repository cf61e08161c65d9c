#include "AppFixture.h"

#include "app/desktop/ModuleLibrary.h"
#include "document/LayoutFile.h"
#include "host/Messages.h"
#include "tests/support/FakeHost.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMetaEnum>
#include <QSettings>

#include <filesystem>

namespace {

ModuleLibrary& Module()
{
    static ModuleLibrary module;
    static std::string error;
    static const bool loaded = module.Load(VORNOSC_MODULE, error);
    if (!loaded)
        throw std::runtime_error(error);
    return module;
}

// The menu item of command id, found as a user finds it: each menu on the way is opened, which
// brings its items up to date.
QAction* MenuItem(const QList<QAction*>& actions, int id)
{
    for (QAction* action : actions) {
        if (QMenu* menu = action->menu()) {
            Q_EMIT menu->aboutToShow();
            if (QAction* found = MenuItem(menu->actions(), id))
                return found;
        } else if (action->data().toInt() == id) {
            return action;
        }
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<OSCProject> ReadLayout(const std::string& path)
{
    auto layout = std::make_unique<OSCProject>();
    FakeHost host;
    if (ReadLayoutFile(ReadWholeFile(path).value_or(""), *layout, &host) != 0)
        throw std::runtime_error(path + " is no layout");
    return layout;
}

AppTest::AppTest()
{
    QSettings().clear();
    window = std::make_unique<MainWindow>(Module(), OscTarget{"127.0.0.1", receiver.Port()});
    window->show();
    QApplication::setActiveWindow(window.get());
    // Polled, since each box opens only after the previous answer is handled.
    QObject::connect(&answering, &QTimer::timeout, [this] {
        auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (answers.empty() || modal == nullptr || !modal->isVisible())
            return;
        const std::string answer = answers.front();
        answers.pop_front();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            // The test's folder written as "<folder>", so that the texts can be told in advance.
            answered.push_back(box->text()
                                   .replace(QString::fromStdString(folder.path().string()),
                                            QStringLiteral("<folder>"))
                                   .toStdString());
            const int button =
                QMetaEnum::fromType<QMessageBox::StandardButtons>().keyToValue(answer.c_str());
            box->button(static_cast<QMessageBox::StandardButton>(button))->click();
        } else if (answer.empty()) {
            modal->reject();
        } else {
            // Typed as a user types it: selecting a file races with the dialog reading its folder.
            modal->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
                ->setText(QString::fromStdString(folder / answer));
            modal->accept();
        }
    });
    answering.start(10);
}

std::string AppTest::CopyOfExample(const std::string& name)
{
    std::filesystem::copy_file(EXAMPLES_DIR "/Demo.VornOsc", folder / name);
    return folder / name;
}

bool AppTest::Modified() const
{
    HostRequest request;
    request.words[0] = kRequestIsModified;
    return Frame().Send(WM_OSC_HOSTREQUEST, 0, reinterpret_cast<std::intptr_t>(&request)) != 0;
}

void AppTest::Pick(int id)
{
    QAction* item = MenuItem(window->menuBar()->actions(), id);
    if (item == nullptr)
        throw std::runtime_error("the menus have no command " + std::to_string(id));
    item->trigger();
}

int main(int argc, char** argv)
{
    // The settings and data of every application run here, this one and those it starts, kept
    // apart from the user's.
    const TempFolder home;
    qputenv("XDG_CONFIG_HOME", (home / "config").c_str());
    qputenv("XDG_DATA_HOME", (home / "data").c_str());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("vornosc"));
    QApplication::setApplicationName(QStringLiteral("vornosc"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
