#include "EditorFixture.h"

#include "editor/ModuleEntry.h"
#include "host/Toolkit.h"
#include "tests/support/TestControls.h"
#include "view/QtWindowHandle.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

QAction* ActionOf(QMenu& menu, int id)
{
    for (QAction* action : menu.actions()) {
        QAction* found = action->menu() != nullptr ? ActionOf(*action->menu(), id) : action;
        if (found != nullptr && found->data().toInt() == id)
            return found;
    }
    return nullptr;
}

QPushButton* Button(QDialog& dialog, QDialogButtonBox::StandardButton button)
{
    return dialog.findChild<QDialogButtonBox*>()->button(button);
}

void Click(QWidget* widget)
{
    // Near the left edge: a check box answers only on its box and caption.
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(4, widget->height() / 2));
}

void Play(QDialog& dialog, const QString& script)
{
    for (const QString& step : script.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        if (step == QStringLiteral("OK") || step == QStringLiteral("Cancel")) {
            Click(Button(dialog, step == QStringLiteral("OK") ? QDialogButtonBox::Ok
                                                              : QDialogButtonBox::Cancel));
            continue;
        }
        auto* widget = dialog.findChild<QWidget*>(step.section(QLatin1Char('='), 0, 0));
        if (widget == nullptr)
            return ADD_FAILURE() << "no widget for " << step.toStdString();
        if (!step.contains(QLatin1Char('='))) {
            Click(widget);
            continue;
        }
        if (qobject_cast<QLineEdit*>(widget) != nullptr)
            QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(widget, step.section(QLatin1Char('='), 1));
    }
}

}  // namespace

EditorTest::EditorTest()
{
    VornOSCEditor_Initialize();
    basics = TestBasics();
    basics.dataFolder = folder / "data";
    std::filesystem::create_directory(basics.dataFolder);
    hostWindow.resize(1200, 900);
    hostWindow.show();
}

EditorTest::~EditorTest()
{
    delete hostWindow.frame;
}

TVornOSCEditor* EditorTest::Open(const char* path)
{
    editor = static_cast<TVornOSCEditor*>(ObjectOf(VornOSCEditor(HandleOf(&hostWindow), path)));
    return editor;
}

OSCControl& EditorTest::Add(int x, int y, int w, int h, bool selected, const char* name)
{
    return AddControl(*editor->project.CurrentPage(), x, y, w, h, 1, selected, name);
}

void EditorTest::Command(int id)
{
    toolkit::SendMessage(HandleOf(editor), WM_COMMAND, id, 0);
}

QAction& EditorTest::Item(int id)
{
    toolkit::SendMessage(HandleOf(editor), WM_INITMENUPOPUP, reinterpret_cast<std::intptr_t>(hMenu),
                         0);
    QAction* action = ActionOf(*hMenu, id);
    if (action == nullptr)
        throw std::runtime_error("menu 1000 has no item " + std::to_string(id));
    return *action;
}

void EditorTest::AnswerNextMessageBox(QMessageBox::StandardButton button)
{
    QTimer::singleShot(0, [button] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->button(button)->click();
    });
}

nlohmann::json EditorCases(const char* key)
{
    nlohmann::json cases = Cases(DATA_DIR "/editor.json", key);
    if (cases.empty())
        throw std::runtime_error(std::string("no cases of ") + key);
    return cases;
}

DialogRunner Choosing(const std::string& path, std::string* seen)
{
    return [path, seen](QDialog& dialog) {
        auto& files = dynamic_cast<QFileDialog&>(dialog);
        const QStringList selected = files.selectedFiles();
        if (seen != nullptr) {
            *seen = QStringList{files.windowTitle(),
                                files.directory().absolutePath(),
                                selected.isEmpty() ? QString() : QFileInfo(selected[0]).fileName(),
                                files.nameFilters().join(QLatin1Char(';')),
                                files.defaultSuffix(),
                                files.testOption(QFileDialog::DontConfirmOverwrite)
                                    ? QStringLiteral("overwrites")
                                    : QStringLiteral("confirms")}
                        .join(QLatin1Char('|'))
                        .toStdString();
        }
        if (path.empty())
            return int{QDialog::Rejected};
        files.selectFile(QString::fromStdString(path));
        return int{QDialog::Accepted};
    };
}

DialogRunner Playing(const QString& script, std::function<void(QDialog&)> check)
{
    return [script, check](QDialog& dialog) {
        QTimer::singleShot(0, &dialog, [&dialog, script, check] {
            Play(dialog, script);
            if (check)
                check(dialog);
            if (dialog.isVisible())
                dialog.reject();
        });
        return dialog.exec();
    };
}

bool OkEnabled(QDialog& dialog)
{
    return Button(dialog, QDialogButtonBox::Ok)->isEnabled();
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
