#include "OtherAppLayout.h"

#include "app/CommandLineHost.h"
#include "document/OSCProject.h"
#include "formats/ImportReport.h"
#include "formats/LayoutFormats.h"

#include <QFile>
#include <QFileInfo>

const LayoutFormat* OtherAppFormat(const QString& path)
{
    const LayoutFormat* format = FindLayoutFormat(QFile::encodeName(path).toStdString());
    return format != nullptr && format->otherApp && format->read != nullptr ? format : nullptr;
}

QString OpenDialogFilter()
{
    QStringList names;
    QStringList patterns;
    for (const LayoutFormat& format : LayoutFormats()) {
        const bool opened = format.otherApp || std::string_view(format.extension) == ".VornOsc";
        if (!opened || format.read == nullptr)
            continue;
        const QString name = QString::fromUtf8(format.name);
        const QString pattern = QStringLiteral("*") + QString::fromUtf8(format.extension);
        if (!names.contains(name)) {
            names.append(name);
            patterns.append(pattern);
        } else {
            patterns[names.indexOf(name)] += QLatin1Char(' ') + pattern;
        }
    }
    QStringList filters{QStringLiteral("Layouts (%1)").arg(patterns.join(QLatin1Char(' ')))};
    for (qsizetype i = 0; i < names.size(); ++i)
        filters.append(QStringLiteral("%1 (%2)").arg(names[i], patterns[i]));
    return filters.join(QStringLiteral(";;"));
}

std::optional<BroughtIn> BringIn(const QString& path, const LayoutFormat& format,
                                 const QString& copy, std::string& error)
{
    CommandLineHost host;
    OSCProject project;
    ImportReport report;
    if (!ReadLayoutAt(format, QFile::encodeName(path).toStdString(), project, host, report, error))
        return std::nullopt;
    const LayoutFormat* own = FindLayoutFormat(".VornOsc");
    if (!own->write(project, host, QFile::encodeName(copy).toStdString(), error))
        return std::nullopt;
    BroughtIn broughtIn{project.device, QFileInfo(path).completeBaseName(), {}};
    for (const std::string& line : report.Lines())
        broughtIn.report.append(QString::fromStdString(line));
    return broughtIn;
}
