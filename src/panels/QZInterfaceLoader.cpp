#include "panels/QZInterfaceLoader.h"

#include "platform/QZLog.h"

#include <QAbstractButton>
#include <QFile>
#include <QStringList>
#include <QWidget>

#include <utility>

// A static library's resources must be asked for by name, and the macro works only outside any namespace.
static void initPanelResources()
{
    Q_INIT_RESOURCE(qz_panels);
}

namespace {

QString& hostFolder()
{
    static QString folder;
    return folder;
}

void nameButtons(const QWidget& contents)
{
    const auto buttons = contents.findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (button->toolTip().isEmpty())
            button->setToolTip(button->accessibleName());
        if (button->accessibleName().isEmpty())
            button->setAccessibleName(button->toolTip().isEmpty() ? button->objectName() : button->toolTip());
    }
}

} // namespace

QZInterfaceLoader::QZInterfaceLoader(Factory factory) : factory_(std::move(factory))
{
    initPanelResources();
}

void QZInterfaceLoader::setHostFolder(const QString& folder)
{
    hostFolder() = folder;
}

QWidget* QZInterfaceLoader::loadInterface(const QString& panelClass, QWidget* parent)
{
    QStringList paths{QStringLiteral(":/qz/%1.ui").arg(panelClass)};
    if (!hostFolder().isEmpty())
        paths.prepend(QStringLiteral("%1/%2.ui").arg(hostFolder(), panelClass));
    for (const QString& path : paths) {
        QFile file(path);
        if (!file.exists())
            continue;
        QWidget* contents = file.open(QIODevice::ReadOnly) ? load(&file, parent) : nullptr;
        if (contents != nullptr) {
            nameButtons(*contents);
            return contents;
        }
        writeBusCommonLog(QStringLiteral("Load interface file %1 failed: %2")
                              .arg(path, errorString().isEmpty() ? file.errorString() : errorString()));
    }
    return nullptr;
}

QWidget* QZInterfaceLoader::createWidget(const QString& className, QWidget* parent, const QString& name)
{
    QWidget* widget = factory_(className, name, parent);
    if (widget == nullptr)
        return QUiLoader::createWidget(className, parent, name);
    widget->setObjectName(name);
    return widget;
}
