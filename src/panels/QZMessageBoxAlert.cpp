#include "panels/QZMessageBoxAlert.h"

#include "platform/QZAlert.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace {

int ask(const QZAlertRequest& request)
{
    // Owned by the active window, which may close under the question.
    const QPointer<QMessageBox> box = new QMessageBox(QApplication::activeWindow());
    box->setIcon(request.warning ? QMessageBox::Warning : QMessageBox::Question);
    box->setText(request.message);
    QList<QPushButton*> buttons;
    for (const QString& label : request.buttons) {
        const auto role = buttons.isEmpty() ? QMessageBox::RejectRole : QMessageBox::AcceptRole;
        auto* button = new QPushButton(label, box);
        box->addButton(button, role);
        buttons.append(button);
    }
    if (!buttons.isEmpty()) {
        box->setDefaultButton(buttons.first());
        box->setEscapeButton(buttons.first());
    }
    box->exec();
    if (box == nullptr)
        return QZAlert::firstButton;
    const auto pressed = buttons.indexOf(static_cast<QPushButton*>(box->clickedButton()));
    delete box;
    return QZAlert::firstButton + static_cast<int>(pressed);
}

} // namespace

void installMessageBoxAlert()
{
    const auto previous = QZAlert::setRunner(ask);
    if (previous)
        QZAlert::setRunner(previous);
}
