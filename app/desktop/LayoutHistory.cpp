#include "LayoutHistory.h"

#include <QFileInfo>
#include <QSettings>
#include <QVariantMap>

namespace {

constexpr int kMostRecent = 8;
// Devices are kept for many more layouts than the menu lists, but not forever.
constexpr int kMostDevices = 500;
const QString kRecentKey = QStringLiteral("recentFiles");
const QString kDevicesKey = QStringLiteral("layoutDevices");

}  // namespace

void LayoutHistory::Remember(const QString& path, int device)
{
    QSettings settings;
    QStringList recent = settings.value(kRecentKey).toStringList();
    recent.removeAll(path);
    recent.prepend(path);
    settings.setValue(kRecentKey, recent.mid(0, kMostRecent));

    QVariantMap devices = settings.value(kDevicesKey).toMap();
    devices.insert(path, device);
    for (auto it = devices.begin(); it != devices.end() && devices.size() > kMostDevices;)
        it = QFileInfo::exists(it.key()) ? std::next(it) : devices.erase(it);
    settings.setValue(kDevicesKey, devices);
}

QStringList LayoutHistory::Recent() const
{
    const QStringList remembered = QSettings().value(kRecentKey).toStringList();
    QStringList recent;
    for (const QString& path : remembered) {
        if (QFileInfo::exists(path))
            recent.append(path);
    }
    if (recent != remembered)
        QSettings().setValue(kRecentKey, recent);
    return recent;
}

void LayoutHistory::Forget(const QString& path)
{
    QStringList recent = QSettings().value(kRecentKey).toStringList();
    recent.removeAll(path);
    QSettings().setValue(kRecentKey, recent);
}

std::optional<int> LayoutHistory::DeviceOf(const QString& path) const
{
    const QVariant device = QSettings().value(kDevicesKey).toMap().value(path);
    if (!device.isValid())
        return std::nullopt;
    return device.toInt() != 0 ? 1 : 0;
}

QString LayoutHistory::LastFolder() const
{
    const QStringList recent = QSettings().value(kRecentKey).toStringList();
    return recent.isEmpty() ? QString() : QFileInfo(recent.front()).path();
}
