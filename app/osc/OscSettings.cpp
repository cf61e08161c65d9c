#include "OscSettings.h"

#include <QSettings>

namespace {

QString Key()
{
    return QStringLiteral("osc/target");
}

}  // namespace

OscTarget LoadOscTarget(QSettings& settings)
{
    std::string ignored;
    const std::string text = settings.value(Key()).toString().toStdString();
    return ParseOscTarget(text, ignored).value_or(OscTarget{});
}

void SaveOscTarget(QSettings& settings, const OscTarget& target)
{
    settings.setValue(Key(), QString::fromStdString(ToString(target)));
}

OscInput LoadOscInput(QSettings& settings)
{
    OscInput input;
    input.on = settings.value(QStringLiteral("osc/input/on"), false).toBool();
    input.host = settings.value(QStringLiteral("osc/input/interface")).toString().toStdString();
    const int port = settings.value(QStringLiteral("osc/input/port"), input.port).toInt();
    if (port >= 1 && port <= 65535)
        input.port = port;
    return input;
}

void SaveOscInput(QSettings& settings, const OscInput& input)
{
    settings.setValue(QStringLiteral("osc/input/on"), input.on);
    settings.setValue(QStringLiteral("osc/input/interface"), QString::fromStdString(input.host));
    settings.setValue(QStringLiteral("osc/input/port"), input.port);
}
