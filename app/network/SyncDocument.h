#pragma once

#include <QByteArray>
#include <QString>

struct LayoutSnapshot;

// What layout sync sends: a layout's name and its index.xml.
struct SyncDocument {
    QString name;
    QByteArray xml;
};

// The document of layout as it stands, named name: the index.xml that
// Export As TouchOSC writes into its archive, byte for byte.
SyncDocument SyncDocumentOf(const LayoutSnapshot& layout, const QString& name);
