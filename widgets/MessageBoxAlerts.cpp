#include "widgets/MessageBoxAlerts.h"

#include <QLabel>
#include <QMessageBox>

namespace {

QMessageBox::Icon iconOf(AlertStyle style)
{
    switch (style) {
    case AlertStyle::Critical:
        return QMessageBox::Critical;
    case AlertStyle::Warning:
        return QMessageBox::Warning;
    default:
        return QMessageBox::Information;
    }
}

/// Else a plug-in's name could be markup, which Qt would show, and load pictures for.
void showAsPlainText(QMessageBox &box)
{
    const auto labels = box.findChildren<QLabel *>();
    for (auto *const label : labels)
        label->setTextFormat(Qt::PlainText);
}

} // namespace

MessageBoxAlerts::MessageBoxAlerts(QWidget *window)
    : m_window(window)
{ }

MessageBoxAlerts::~MessageBoxAlerts() = default;

void MessageBoxAlerts::runModal(const Alert &alert)
{
    // On the heap, and watched: the window takes its boxes with it when it goes while one of them is shown.
    const QPointer<QMessageBox> box = new QMessageBox(m_window);
    box->setIcon(iconOf(alert.style));
    box->setTextFormat(Qt::PlainText);
    box->setText(alert.messageText);
    box->setInformativeText(alert.informativeText);
    showAsPlainText(*box);
    box->setStandardButtons(QMessageBox::Ok);
    box->setDefaultButton(QMessageBox::Ok);
    box->exec();
    delete box;
}
