// The editor's commands that write files: save, save as, the question before
// closing, and the two exports.
#include "LayoutPath.h"
#include "TVornOSCEditor.h"
#include "document/LayoutFile.h"
#include "document/TemporaryOutput.h"
#include "document/TextField.h"
#include "host/VornBasics.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

namespace {

// The prompt's answers.
constexpr int kAnswerCancel = 2;
constexpr int kAnswerDiscard = 3;
constexpr int kAnswerSave = 4;

// Paths are bytes in the file system's encoding, which need not be UTF-8:
// they are handed to Qt, and taken back, only through these two.
QString Shown(std::string_view path)
{
    return QFile::decodeName(QByteArray(path.data(), static_cast<qsizetype>(path.size())));
}

std::string Bytes(const QString& path)
{
    return QFile::encodeName(path).toStdString();
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
    std::error_code ignored;
    std::filesystem::create_directory(path, ignored);
    return path;
}

// A name that is not UTF-8 shows with replacement characters and comes back
// so from a dialog. A chosen name that still starts as the proposed one showed
// keeps the proposed bytes: Save As under the same name writes the same file,
// and an export only adds its extension.
std::string ChosenPath(const QString& chosen, const std::string& proposedName)
{
    const QFileInfo file(chosen);
    const QString shownName = Shown(proposedName);
    if (!file.fileName().startsWith(shownName))
        return Bytes(chosen);
    const std::string name = proposedName + Bytes(file.fileName().mid(shownName.size()));
    return AppendPath(Bytes(file.absolutePath()), name.c_str());
}

}  // namespace

void TVornOSCEditor::OnFileSave()
{
    SaveToLayoutPath();
}

bool TVornOSCEditor::SaveToLayoutPath()
{
    // The layout goes to a temporary file that replaces the old one only once
    // it is complete, so a failed save leaves the previous file as it was.
    const std::string bytes = WriteLayoutFile(project, host);
    std::string error;
    if (ReplaceFile(layoutPath, bytes, error)) {
        NoteSavedState();
        return true;
    }
    const std::string message = "The layout could not be saved to \"" + std::string(layoutPath) +
                                "\": " + error +
                                ". Your changes are still here; save them with Save As in "
                                "another folder.";
    host->ShowError(message.c_str());
    return false;
}

bool TVornOSCEditor::WriteCopy(const char* path)
{
    std::string ignored;
    return path != nullptr && ReplaceFile(path, WriteLayoutFile(project, host), ignored);
}

bool TVornOSCEditor::RunSaveDialog(QFileDialog& dialog, const SplitPath& proposed,
                                   std::string& chosen)
{
    dialog.setDirectory(Shown(proposed.folder));
    dialog.selectFile(Shown(proposed.name));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    if (runDialog(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    chosen = ChosenPath(dialog.selectedFiles().front(), proposed.name);
    return AcceptablePath(chosen);
}

void TVornOSCEditor::OnFileSaveAs()
{
    const SplitPath split = SplitFileName(TextOf(layoutPath));
    // A layout never saved starts in the host's data folder.
    const std::string folder =
        split.folder.empty() ? MadeFolder(host->GetDataFolder(), "OSC") : split.folder;
    QFileDialog dialog(parentWnd, QStringLiteral("Save OSC Layout As..."), QString(),
                       QStringLiteral("Vorn OSC Layout (*.VORNOSC)"));
    dialog.setDefaultSuffix(QStringLiteral("vornosc"));
    const bool neverSaved = std::string_view(layoutPath) == "New";
    std::string chosen;
    if (!RunSaveDialog(dialog, {folder, neverSaved && !newName.empty() ? newName : split.name},
                       chosen))
        return;
    // The layout takes the chosen name only once its file is written there.
    const std::string previous = layoutPath;
    CopyTextField(layoutPath, chosen);
    if (!SaveToLayoutPath()) {
        CopyTextField(layoutPath, previous);
        return;
    }
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
    QFileDialog dialog(parentWnd, QString::fromUtf8(title), QString(), QString::fromUtf8(filter));
    dialog.setDefaultSuffix(QString::fromUtf8(extension));
    std::string chosen;
    if (RunSaveDialog(dialog, {folder, name}, chosen))
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
