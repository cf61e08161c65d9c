#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <string>

struct LayoutFormat;

// Layouts made in the touch apps' editors, which the application opens as new
// layouts of its own: the format of a file, and the file read and written as a
// layout file for the editor to open.

// The touch app's format path ends in, or null when it is none.
const LayoutFormat* OtherAppFormat(const QString& path);

// The Open dialog's filter: every layout first, then each format by its name.
QString OpenDialogFilter();

// What a layout brought in needs besides its file.
struct BroughtIn {
    int device = 0;      // which the layout file does not keep
    QString name;        // the file's name without its extension
    QStringList report;  // what was left out or changed, one line each
};

// Reads the layout at path and writes it as the layout file copy; nothing,
// with error saying why, when it cannot be read or the copy not written.
std::optional<BroughtIn> BringIn(const QString& path, const LayoutFormat& format,
                                 const QString& copy, std::string& error);
