#include "DesktopHost.h"

#include "editor/CommandIds.h"
#include "host/Messages.h"
#include "view/MessageEvent.h"
#include "view/QtWindowHandle.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>

#include <cstdio>
#include <string_view>
#include <utility>

using namespace Qt::StringLiterals;

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
    // The user's own files: layouts and exports are found where people look.
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + u"/vornosc"_s;
    QDir().mkpath(folder);
    return QFile::encodeName(folder).toStdString();
}

int DesktopHost::AskSaveChanges(void* editor, const char* path)
{
    ++questionsAsked_;
    lastAnswerWasSave_ = false;
    const bool offerSaveAs = std::exchange(offerSaveAs_, false);
    const QString name = QFileInfo(QFile::decodeName(path)).fileName();
    QMessageBox box(QMessageBox::Question, QStringLiteral("OSC Editor"),
                    QStringLiteral("Save the changes to \u201c%1\u201d before closing?").arg(name),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, window_);
    box.setDefaultButton(QMessageBox::Save);
    box.button(QMessageBox::Discard)->setText(QStringLiteral("Don't Save"));
    if (offerSaveAs)
        box.button(QMessageBox::Save)->setText(QStringLiteral("Save As..."));
    switch (box.exec()) {
        case QMessageBox::Save:
            // The editor would write a layout never saved to a file named New
            // in whatever folder is current: it gets a name of the user's first,
            // as one whose own file failed gets another.
            if (offerSaveAs || std::string_view(path) == kNeverSaved) {
                MessageEvent saveAs(WM_COMMAND, ID_FILE_SAVE_AS, 0, MessageEvent::kSent);
                QCoreApplication::sendEvent(ObjectOf(editor), &saveAs);
                if (IsModified(editor))
                    return kAnswerCancel;
            }
            lastAnswerWasSave_ = true;
            return kAnswerSave;
        case QMessageBox::Discard:
            return kAnswerDiscard;
        default:
            return kAnswerCancel;
    }
}

bool DesktopHost::IsModified(void* editor)
{
    HostRequest request;
    request.words[0] = kRequestIsModified;
    MessageEvent asked(WM_OSC_HOSTREQUEST, 0, reinterpret_cast<std::intptr_t>(&request),
                       MessageEvent::kSent);
    QCoreApplication::sendEvent(ObjectOf(editor), &asked);
    return asked.result != 0;
}

extern "C" VornBasics* AllocVornBasics(WindowHandle, int, int, void*, void*)
{
    // An editor made without the main window still gets a host, one without
    // a window for its values.
    static DesktopHost windowless(nullptr);
    return windowHost != nullptr ? windowHost : &windowless;
}
