#include "SyncPlace.h"

#include "app/osc/ListenPlace.h"

#include <charconv>

std::optional<int> ParseSyncPort(std::string_view text, std::string& error)
{
    int port = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, port);
    if (read.ec == std::errc() && read.ptr == end && port >= 1 && port <= 65535)
        return port;
    error = "layout sync \"" + std::string(text) +
            "\" is not a port from 1 to 65535, for example " +
            std::to_string(SyncPlace::kUsualPort) + ".";
    return std::nullopt;
}

SyncPlace LoadSyncPlace(QSettings& settings)
{
    return LoadListenPlace<SyncPlace>(settings, QStringLiteral("sync"));
}

void SaveSyncPlace(QSettings& settings, const SyncPlace& place)
{
    SaveListenPlace(settings, QStringLiteral("sync"), place);
}
