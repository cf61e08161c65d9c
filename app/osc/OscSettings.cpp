#include "OscSettings.h"

#include "ListenPlace.h"

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
    return LoadListenPlace<OscInput>(settings, QStringLiteral("osc/input"));
}

void SaveOscInput(QSettings& settings, const OscInput& input)
{
    SaveListenPlace(settings, QStringLiteral("osc/input"), input);
}
