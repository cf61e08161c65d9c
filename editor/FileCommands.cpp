// The editor's commands that write files: save, save as, the question before
// closing, and the two exports.
#include "LayoutPath.h"
#include "TVornOSCEditor.h"
#include "document/LayoutFile.h"
#include "document/TextField.h"
#include "host/VornBasics.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QSaveFile>

namespace {

// The prompt's answers.
constexpr int kAnswerCancel = 2;
constexpr int kAnswerDiscard = 3;
constexpr int kAnswerSave = 4;

QString FromUtf8(const std::string& text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string AppendPath(const std::string& folder, const char* name)
{
    if (folder.empty() || folder.back() == '/')
        return folder + name;
    return folder + '/' + name;
}

// Creates one folder level; a failure shows later, when the dialog opens elsewhere.
std::string MadeFolder(const std::string& folder, const char* name)
{
    const std::string path = AppendPath(folder, name);
    QDir().mkdir(FromUtf8(path));
    return path;
}

}  // namespace

void TVornOSCEditor::OnFileSave()
{
    // The layout goes to a temporary file that replaces the old one only once
    // it is complete, so a failed save leaves the previous file as it was.
    const std::string bytes = WriteLayoutFile(project, host);
    QSaveFile file(QString::fromUtf8(layoutPath));
    if (file.open(QIODevice::WriteOnly) &&
        file.write(bytes.data(), static_cast<qint64>(bytes.size())) ==
            static_cast<qint64>(bytes.size()) &&
        file.commit()) {
        NoteSavedState();
        return;
    }
    const std::string message = "The layout could not be saved to \"" + std::string(layoutPath) +
                                "\": " + file.errorString().toStdString() +
                                ". Your changes are still here; save them with Save As in "
                                "another folder.";
    host->ShowError(message.c_str());
}

bool TVornOSCEditor::WriteCopy(const char* path)
{
    if (path == nullptr)
        return false;
    const std::string bytes = WriteLayoutFile(project, host);
    QFile file(QString::fromUtf8(path));
    return file.open(QIODevice::WriteOnly) &&
           file.write(bytes.data(), static_cast<qint64>(bytes.size())) ==
               static_cast<qint64>(bytes.size());
}

bool TVornOSCEditor::RunSaveDialog(QFileDialog& dialog, std::string& chosen)
{
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    if (runDialog(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    chosen = dialog.selectedFiles().front().toStdString();
    return AcceptablePath(chosen);
}

void TVornOSCEditor::OnFileSaveAs()
{
    const SplitPath split = SplitFileName(TextOf(layoutPath));
    // A layout never saved starts in the host's data folder.
    const std::string folder =
        split.folder.empty() ? MadeFolder(host->GetDataFolder(), "OSC") : split.folder;
    QFileDialog dialog(parentWnd, QStringLiteral("Save OSC Layout As..."), FromUtf8(folder),
                       QStringLiteral("Vorn OSC Layout (*.VORNOSC)"));
    dialog.setDefaultSuffix(QStringLiteral("vornosc"));
    const bool neverSaved = std::string_view(layoutPath) == "New";
    dialog.selectFile(FromUtf8(neverSaved && !newName.empty() ? newName : split.name));
    std::string chosen;
    if (!RunSaveDialog(dialog, chosen))
        return;
    CopyTextField(layoutPath, chosen);
    OnFileSave();
    SetTitle();
}

std::uint8_t TVornOSCEditor::CanClose()
{
    if (modified == 0)
        return 0;
    switch (host->AskSaveChanges(this, layoutPath)) {
        case kAnswerDiscard:
            modified = 0;
            return 0;
        case kAnswerSave:
            // Closes whatever became of the save; the host checks again.
            if (layoutPath[0] != '\0')
                OnFileSave();
            else
                OnFileSaveAs();
            return 0;
        case kAnswerCancel:
            modified = 0;
            return 1;
        default:
            return 0;
    }
}

void TVornOSCEditor::Export(const char* subfolder, const char* extension, const char* filter,
                            const char* title,
                            void (OSCProject::*exporter)(VornBasics*, const char*))
{
    // Exports gather in the host's data folder, whatever folder the layout is in.
    const std::string folder = MadeFolder(MadeFolder(host->GetDataFolder(), "OSC"), subfolder);
    const std::string name(WithoutSuffix(SplitFileName(TextOf(layoutPath)).name, ".vornosc"));
    QFileDialog dialog(parentWnd, QString::fromUtf8(title), FromUtf8(folder),
                       QString::fromUtf8(filter));
    dialog.setDefaultSuffix(QString::fromUtf8(extension));
    dialog.selectFile(FromUtf8(name));
    std::string chosen;
    if (RunSaveDialog(dialog, chosen))
        (project.*exporter)(host, chosen.c_str());
}

void TVornOSCEditor::OnOscEditorExportAsTouchOSCFile()
{
    Export("TouchOSC", "touchosc", "TouchOSC File (*.touchosc)", "Export As TouchOSC File...",
           &OSCProject::ExportTouchOSCFile);
}

void TVornOSCEditor::OnOscEditorExportAsLemurFile()
{
    Export("Lemur", "jzml", "Lemur File (*.jzml)", "Export As Lemur File...",
           &OSCProject::ExportLemurFile);
}
