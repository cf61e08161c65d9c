#include "PreviewKey.h"

#include <QRandomGenerator>
#include <QUrl>
#include <QUrlQuery>

#include <array>

QString NewPreviewKey()
{
    std::array<quint32, 4> bits{};
    QRandomGenerator::system()->fillRange(bits.data(), bits.size());
    return QString::fromLatin1(
        QByteArray(reinterpret_cast<const char*>(bits.data()), sizeof bits).toHex());
}

bool CarriesKey(const QUrl& url, const QString& key)
{
    const QString given = QUrlQuery(url).queryItemValue(QStringLiteral("key"));
    if (key.isEmpty() || given.size() != key.size())
        return false;
    char16_t difference = 0;
    for (qsizetype i = 0; i < key.size(); ++i)
        difference |= given[i].unicode() ^ key[i].unicode();
    return difference == 0;
}
