#pragma once

#include <QStringList>

#include <optional>

// The layouts the user opened and saved, newest first, kept in the settings
// for Open Recent; and the target device of each, which the layout file does
// not keep, so that a layout reopens for the screen it was made for.
class LayoutHistory {
public:
    // Puts path first in the list and notes its device.
    void Remember(const QString& path, int device);
    // The layouts still there, newest first; those that are gone are forgotten.
    QStringList Recent() const;
    void Forget(const QString& path);
    std::optional<int> DeviceOf(const QString& path) const;
    // The folder of the layout remembered last, or an empty text.
    QString LastFolder() const;
};
