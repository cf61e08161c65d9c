#pragma once

#include <optional>
#include <string>
#include <string_view>

class QSettings;

// Whether and where the application serves layout sync: on or off, an
// interface's address (empty: all of them) and a port, by default the one
// touch apps know editors by.
struct SyncPlace {
    static constexpr int kUsualPort = 9658;

    bool on = false;
    std::string host;
    int port = kUsualPort;

    bool operator==(const SyncPlace&) const = default;
};

// Reads the PORT of "--sync PORT", 1 to 65535; on failure, error says what to type instead.
std::optional<int> ParseSyncPort(std::string_view text, std::string& error);

// The place kept between runs, under "sync/...".
SyncPlace LoadSyncPlace(QSettings& settings);
void SaveSyncPlace(QSettings& settings, const SyncPlace& place);
