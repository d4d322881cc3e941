#pragma once

#include <QString>
#include <QUiLoader>

#include <functional>

/// Loads the interface file of a panel, named after its class: a host's own one if there is such a file in the folder
/// that it set, else the library's. Custom widgets are made by the panel's factory.
class QZInterfaceLoader final : public QUiLoader {
    Q_OBJECT
public:
    /// Makes the widget of `className` with the identifier `name`, or returns null for the loader to make it.
    using Factory = std::function<QWidget*(const QString& className, const QString& name, QWidget* parent)>;

    explicit QZInterfaceLoader(Factory factory);

    /// The contents of the file, as a child of `parent`; null when there is none. A file that is no interface is logged
    /// and passed over. A button that the file gives a tooltip or an accessible name, but not both, takes the one for
    /// the other; its identifier is its accessible name when there is neither.
    QWidget* loadInterface(const QString& panelClass, QWidget* parent);

    /// Folder with a host's own interface files; an empty text goes back to the library's.
    static void setHostFolder(const QString& folder);

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override;

private:
    Factory factory_;
};
