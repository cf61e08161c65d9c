#include "AppFixture.h"

#include "app/desktop/ModuleLibrary.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMetaEnum>
#include <QSettings>
#include <QStandardPaths>

#include <cstdio>
#include <filesystem>

namespace {

// Loaded in main, as the application loads it at start.
ModuleLibrary module;

}  // namespace

QString RecoveryFolder(qint64 run)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/recovery/") + QString::number(run);
}

AppTest::AppTest()
{
    QSettings().clear();
    window = std::make_unique<MainWindow>(module, OscTarget{"127.0.0.1", receiver.Port()});
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

void AppTest::Pick(int id)
{
    for (QAction* top : window->menuBar()->actions()) {
        Q_EMIT top->menu()->aboutToShow();  // as a user opens it, which brings its items up to date
        for (QAction* item : top->menu()->actions()) {
            if (item->data().toInt() == id)
                return item->trigger();
        }
    }
    throw std::runtime_error("the menus have no command " + std::to_string(id));
}

int main(int argc, char** argv)
{
    // The settings, data and working folder of every application run here, this one and those it
    // starts, apart from the user's; and their messages in English, as the tests expect them.
    const TempFolder home;
    std::filesystem::current_path(home.path());
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("XDG_CONFIG_HOME", (home / "config").c_str());
    qputenv("XDG_DATA_HOME", (home / "data").c_str());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("vornosc"));
    QApplication::setApplicationName(QStringLiteral("vornosc"));
    if (std::string error; !module.Load(VORNOSC_MODULE, error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
