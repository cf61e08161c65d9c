#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

class EditorFrame;

// Keeps a recovery copy of every layout with unsaved changes in the data
// folder, so that a crash or a kill loses at most a few seconds of work. A
// copy goes once its layout is saved, given up or closed.
class RecoveryKeeper {
public:
    // root: where the copies live, in a folder per running application made
    // when first needed, so that two running at once keep out of each other's way.
    explicit RecoveryKeeper(const QString& root);
    // A clean exit leaves no copies behind.
    ~RecoveryKeeper();

    // Brings the copies up to date with the open frames' layouts: written
    // through a temporary file for each changed layout, removed for the others
    // and for frames that closed.
    void Update(const QList<EditorFrame*>& frames);

    // A copy left behind by a run that did not end cleanly and no longer runs.
    struct Leftover {
        QString copy;          // the recovery copy
        QString originalPath;  // the layout it was made from ("New" if never saved)
        QByteArray originalFile;  // the same path as the file system's bytes
        QDateTime written;
    };
    QList<Leftover> Leftovers() const;
    void Discard(const Leftover& leftover) const;

private:
    QString CopyPath(const EditorFrame& frame) const;
    QString root_;
    QString folder_;
};
