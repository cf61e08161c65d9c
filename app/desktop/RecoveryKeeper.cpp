#include "RecoveryKeeper.h"

#include "EditorFrame.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <csignal>

namespace {

// Beside each copy, a note of the layout's path: "<copy>.path".
const QString kNoteSuffix = QStringLiteral(".path");
const QString kCopySuffix = QStringLiteral(".VornOsc");

void RemoveCopy(const QString& copy)
{
    QFile::remove(copy);
    QFile::remove(copy + kNoteSuffix);
}

}  // namespace

RecoveryKeeper::RecoveryKeeper(const QString& root)
    : root_(root),
      folder_(root + QLatin1Char('/') + QString::number(QCoreApplication::applicationPid()))
{
}

RecoveryKeeper::~RecoveryKeeper()
{
    QDir(folder_).removeRecursively();
}

QString RecoveryKeeper::CopyPath(const EditorFrame& frame) const
{
    return folder_ + QLatin1Char('/') + frame.RecoveryName() + kCopySuffix;
}

void RecoveryKeeper::Update(const QList<EditorFrame*>& frames)
{
    // Copies of frames that closed go first.
    QStringList open;
    for (const EditorFrame* frame : frames)
        open.append(CopyPath(*frame));
    for (const QFileInfo& copy :
         QDir(folder_).entryInfoList({QStringLiteral("*") + kCopySuffix}, QDir::Files)) {
        if (!open.contains(copy.filePath()))
            RemoveCopy(copy.filePath());
    }
    for (const EditorFrame* frame : frames) {
        const QString copy = CopyPath(*frame);
        if (!frame->IsModified()) {
            RemoveCopy(copy);
            continue;
        }
        QDir().mkpath(folder_);
        // The editor writes a temporary file that replaces the copy only when
        // complete, so a crash while writing leaves the previous copy.
        const QString temporary = copy + QStringLiteral(".part");
        if (!frame->WriteCopy(temporary)) {
            QFile::remove(temporary);
            continue;
        }
        QSaveFile note(copy + kNoteSuffix);
        if (note.open(QIODevice::WriteOnly)) {
            note.write(QFile::encodeName(frame->LayoutPath()));
            note.commit();
        }
        QFile::remove(copy);
        QFile::rename(temporary, copy);
    }
}

QList<RecoveryKeeper::Leftover> RecoveryKeeper::Leftovers() const
{
    QList<Leftover> leftovers;
    for (const QFileInfo& run : QDir(root_).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool numbered = false;
        const qint64 pid = run.fileName().toLongLong(&numbered);
        // A run still going keeps its copies; so does this one.
        if (!numbered || pid == QCoreApplication::applicationPid() ||
            (::kill(static_cast<pid_t>(pid), 0) == 0 || errno != ESRCH))
            continue;
        const QDir folder(run.filePath());
        for (const QFileInfo& copy :
             folder.entryInfoList({QStringLiteral("*") + kCopySuffix}, QDir::Files, QDir::Time)) {
            QFile note(copy.filePath() + kNoteSuffix);
            const QByteArray original =
                note.open(QIODevice::ReadOnly) ? note.readAll() : QByteArrayLiteral("New");
            leftovers.append(
                {copy.filePath(), QFile::decodeName(original), original, copy.lastModified()});
        }
    }
    return leftovers;
}

void RecoveryKeeper::Discard(const Leftover& leftover) const
{
    RemoveCopy(leftover.copy);
    // The run's folder goes with its last copy.
    QDir().rmdir(QFileInfo(leftover.copy).path());
}
