#include "ModuleResources.h"

#include "ModuleEntry.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeySequence>
#include <QMenu>
#include <QMetaEnum>

#include <cstdio>

namespace {

struct Nib {
    QString folder;
};

ResourceHandle currentResources = nullptr;

QString NibFile(ResourceHandle nib, const QString& name)
{
    return static_cast<const Nib*>(nib)->folder + QLatin1Char('/') + name;
}

// Items are objects with a command "id", a "text", optionally a standard
// "shortcut" (a QKeySequence::StandardKey name) or "keys" (key sequences as
// written on keys, for an item whose standard keys would clash with another's),
// and "checkable"; an object with "items" is a submenu; an empty object is a
// separator.
void AddItems(QMenu& menu, const QJsonArray& items)
{
    const QMetaEnum standardKeys = QMetaEnum::fromType<QKeySequence::StandardKey>();
    for (const QJsonValue& value : items) {
        const QJsonObject item = value.toObject();
        const QString text = item.value(QLatin1String("text")).toString();
        if (item.contains(QLatin1String("items"))) {
            AddItems(*menu.addMenu(text), item.value(QLatin1String("items")).toArray());
        } else if (text.isEmpty()) {
            menu.addSeparator();
        } else {
            QAction* action = menu.addAction(text);
            action->setData(item.value(QLatin1String("id")).toInt());
            action->setCheckable(item.value(QLatin1String("checkable")).toBool());
            const QByteArray shortcut = item.value(QLatin1String("shortcut")).toString().toLatin1();
            bool known = false;
            const int key = standardKeys.keyToValue(shortcut.constData(), &known);
            if (known)
                action->setShortcuts(static_cast<QKeySequence::StandardKey>(key));
            QList<QKeySequence> keys;
            for (const QJsonValue& sequence : item.value(QLatin1String("keys")).toArray())
                keys.append(QKeySequence(sequence.toString(), QKeySequence::PortableText));
            if (!keys.isEmpty())
                action->setShortcuts(keys);
        }
    }
}

}  // namespace

ResourceHandle OpenNib(const char* name)
{
    // Compiled-in resources of a static library are registered on first use.
    Q_INIT_RESOURCE(VornOSCEditor);
    const QString folder = QStringLiteral(":/nib/%1.nib").arg(QString::fromUtf8(name));
    if (!QFileInfo(folder).isDir())
        return nullptr;
    return new Nib{folder};
}

void CloseNib(ResourceHandle nib)
{
    delete static_cast<Nib*>(nib);
}

ResourceHandle CurrentResources()
{
    return currentResources;
}

void SetCurrentResources(ResourceHandle nib)
{
    currentResources = nib;
}

HoldInstance::HoldInstance(ResourceHandle nib) : saved_(CurrentResources())
{
    SetCurrentResources(nib != nullptr ? nib : hInstance);
}

HoldInstance::~HoldInstance()
{
    if (saved_ != nullptr)
        SetCurrentResources(saved_);
}

QMenu* LoadMenu(int id)
{
    if (currentResources == nullptr)
        return nullptr;
    QFile file(NibFile(currentResources, QStringLiteral("menu-%1.json").arg(id)));
    if (!file.open(QIODevice::ReadOnly))
        return nullptr;
    const QJsonDocument description = QJsonDocument::fromJson(file.readAll());
    if (!description.isArray())
        return nullptr;
    auto* menu = new QMenu;
    AddItems(*menu, description.array());
    return menu;
}

QPixmap LoadIcon(ResourceHandle nib, int id)
{
    if (nib == nullptr)
        return {};
    return QPixmap(NibFile(nib, QStringLiteral("icon-%1.png").arg(id)));
}

MacInstance::~MacInstance()
{
    if (nibReference != nullptr) {
        DllMain(nibReference, kDetach);
        CloseNib(nibReference);
        nibReference = nullptr;
    }
    initialized = 0;
}

ResourceHandle MacInstance::Initialize(const char* name)
{
    if (initialized != 0)
        return nibReference;
    if (name == nullptr)
        return nullptr;
    nibReference = OpenNib(name);
    if (nibReference == nullptr) {
        std::printf("MacInstance: nib file not loaded = %s.nib\n", name);
        std::fflush(stdout);
    }
    // The module attaches even without its nib; it then runs without menus
    // and icons.
    DllMain(nibReference, kAttach);
    initialized = 1;
    return nibReference;
}
