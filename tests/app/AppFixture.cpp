#include "AppFixture.h"

#include "app/desktop/ModuleLibrary.h"
#include "document/LayoutFile.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestControls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMetaEnum>
#include <QMouseEvent>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QStandardPaths>

#include <cstdio>
#include <filesystem>

namespace {

// Loaded in main, as the application loads it at start.
ModuleLibrary module;

}  // namespace

ControlList ControlsOfLayout(const std::string& path)
{
    OSCProject layout;
    FakeHost host;
    EXPECT_EQ(ReadLayoutFile(ReadWholeFile(path).value_or(""), layout, &host), 0) << path;
    return layout.pages.empty() ? ControlList() : std::move(layout.pages[0]->controls);
}

QMenu* TheModuleMenu()
{
    return *module.menu;
}

QString RecoveryFolder(qint64 run)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/recovery/") + QString::number(run);
}

void Retype(QWidget* field, const QString& text)
{
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClicks(field, text);
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
            buttons.clear();
            for (const QAbstractButton* button : box->findChild<QDialogButtonBox*>()->buttons())
                buttons.push_back(button->text().remove(u'&').toStdString());
            const int button =
                QMetaEnum::fromType<QMessageBox::StandardButtons>().keyToValue(answer.c_str());
            box->button(static_cast<QMessageBox::StandardButton>(button))->click();
        } else if (auto* files = qobject_cast<QFileDialog*>(modal)) {
            fileFolders.push_back(files->directory().absolutePath().toStdString());
            auto* name = files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            fileNames.push_back(name->text().toStdString());
            if (answer.empty())
                return files->reject();
            // Typed as a user types it: selecting a file races with the dialog reading its folder.
            name->setText(QString::fromStdString(folder / answer));
            modal->accept();
        } else if (answer.empty()) {
            modal->reject();
        } else {
            for (const QString& field : QString::fromStdString(answer).split(u'|')) {
                const QString name = field.section(u'=', 0, 0), text = field.section(u'=', 1);
                if (auto* combo = modal->findChild<QComboBox*>(name))
                    combo->setCurrentText(text);
                else
                    modal->findChild<QLineEdit*>(name)->setText(text);
            }
            modal->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        }
    });
    answering.start(10);
}

std::string AppTest::CopyOfExample(const std::string& name)
{
    std::filesystem::copy_file(EXAMPLES_DIR "/Demo.VornOsc", folder / name);
    return folder / name;
}

std::string AppTest::WriteLayout(const std::string& name, const nlohmann::json& controls)
{
    OSCProject layout;
    for (const nlohmann::json& control : controls)
        AddControl(*layout.pages.front(), control);
    FakeHost host;
    WriteWholeFile(folder / name, WriteLayoutFile(layout, &host));
    return folder / name;
}

QWidget& AppTest::Canvas() const
{
    // The canvas lives in the loaded module: it is known by its class's name.
    for (QWidget* child : Frame().Editor()->findChildren<QWidget*>()) {
        if (child->inherits("TVornOSCView"))
            return *child;
    }
    throw std::runtime_error("the layout has no canvas");
}

void AppTest::Mouse(QEvent::Type type, QPoint at, Qt::MouseButtons held)
{
    QWidget& canvas = Canvas();
    QMouseEvent event(type, QPointF(at), canvas.mapToGlobal(QPointF(at)), Qt::LeftButton, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&canvas, &event);
}

void AppTest::Drag(QPoint from, QPoint to)
{
    Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton);
    Mouse(QEvent::MouseMove, to, Qt::LeftButton);
    Mouse(QEvent::MouseButtonRelease, to, Qt::NoButton);
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
    qputenv("HOME", home.path().c_str());  // where the documents folder is
    qputenv("XDG_CONFIG_HOME", (home / "config").c_str());
    qputenv("XDG_DATA_HOME", (home / "data").c_str());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The Avahi daemon of the tests, the system's or their own.
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", AVAHI_BUS);
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
