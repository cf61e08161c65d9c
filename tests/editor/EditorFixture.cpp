#include "EditorFixture.h"

#include "editor/ModuleEntry.h"
#include "tests/support/TestControls.h"
#include "host/Toolkit.h"
#include "view/QtWindowHandle.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>

namespace {

QAction* ActionOf(QMenu& menu, int id)
{
    for (QAction* action : menu.actions()) {
        if (QMenu* submenu = action->menu()) {
            if (QAction* found = ActionOf(*submenu, id))
                return found;
        } else if (action->data().toInt() == id) {
            return action;
        }
    }
    return nullptr;
}

QAction& MenuAction(TVornOSCEditor& editor, int id)
{
    toolkit::SendMessage(HandleOf(&editor), WM_INITMENUPOPUP,
                         reinterpret_cast<std::intptr_t>(hMenu), 0);
    QAction* action = ActionOf(*hMenu, id);
    if (action == nullptr)
        throw std::runtime_error("menu 1000 has no item " + std::to_string(id));
    return *action;
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

bool EditorTest::Enabled(int id)
{
    return MenuAction(*editor, id).isEnabled();
}

bool EditorTest::Checked(int id)
{
    return MenuAction(*editor, id).isChecked();
}

void EditorTest::AnswerNextMessageBox(QMessageBox::StandardButton button)
{
    QTimer::singleShot(0, [button] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->button(button)->click();
    });
}

DialogRunner Choosing(const std::string& path, SaveDialogSeen* seen)
{
    return [path, seen](QDialog& dialog) {
        auto& files = dynamic_cast<QFileDialog&>(dialog);
        if (seen != nullptr) {
            const QStringList selected = files.selectedFiles();
            *seen = {files.windowTitle().toStdString(),
                     files.directory().absolutePath().toStdString(),
                     selected.isEmpty() ? std::string()
                                        : QFileInfo(selected.front()).fileName().toStdString(),
                     files.nameFilters().join(QLatin1Char(';')).toStdString(),
                     files.defaultSuffix().toStdString(),
                     !files.testOption(QFileDialog::DontConfirmOverwrite)};
        }
        if (path.empty())
            return int{QDialog::Rejected};
        files.selectFile(QString::fromStdString(path));
        return int{QDialog::Accepted};
    };
}
