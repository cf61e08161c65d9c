#include "DesktopHost.h"

#include "editor/CommandIds.h"
#include "host/Messages.h"
#include "view/MessageEvent.h"
#include "view/QtWindowHandle.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>

#include <cstdio>
#include <string_view>

namespace {

// The host of the main window, which every editor shares.
DesktopHost* windowHost = nullptr;

constexpr std::string_view kNeverSaved = "New";

constexpr int kAnswerCancel = 2;
constexpr int kAnswerDiscard = 3;
constexpr int kAnswerSave = 4;

}  // namespace

DesktopHost::DesktopHost(QWidget* window) : window_(window)
{
    hostWindow = HandleOf(window);
    if (window != nullptr)
        windowHost = this;
}

DesktopHost::~DesktopHost()
{
    if (windowHost == this)
        windowHost = nullptr;
}

void DesktopHost::ShowError(const char* text)
{
    ++errorsShown_;
    std::fprintf(stderr, "vornosc: %s\n", text);
    QMessageBox::warning(window_, QStringLiteral("OSC Editor"), QString::fromUtf8(text));
}

std::string DesktopHost::GetDataFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(folder);
    return folder.toStdString();
}

int DesktopHost::AskSaveChanges(void* editor, const char* path)
{
    const QString name = QFileInfo(QString::fromUtf8(path)).fileName();
    QMessageBox box(QMessageBox::Question, QStringLiteral("OSC Editor"),
                    QStringLiteral("Save the changes to \u201c%1\u201d before closing?").arg(name),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, window_);
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
        case QMessageBox::Save:
            // The editor would write a layout never saved to a file named New
            // in whatever folder is current: it gets a name of the user's first.
            if (std::string_view(path) == kNeverSaved) {
                MessageEvent saveAs(WM_COMMAND, ID_FILE_SAVE_AS, 0, MessageEvent::kSent);
                QCoreApplication::sendEvent(ObjectOf(editor), &saveAs);
                if (std::string_view(path) == kNeverSaved)
                    return kAnswerCancel;
            }
            return kAnswerSave;
        case QMessageBox::Discard:
            return kAnswerDiscard;
        default:
            return kAnswerCancel;
    }
}

extern "C" VornBasics* AllocVornBasics(WindowHandle, int, int, void*, void*)
{
    // An editor made without the main window still gets a host, one without
    // a window for its values.
    static DesktopHost windowless(nullptr);
    return windowHost != nullptr ? windowHost : &windowless;
}
