#pragma once

class QString;
class QUrl;

// A new key for one run: 128 random bits from the system's generator, as 32
// hexadecimal digits.
QString NewPreviewKey();

// Whether url's query carries key as "key=KEY", compared in the same time
// whatever the guess, so that timing tells nothing of the key.
bool CarriesKey(const QUrl& url, const QString& key);
