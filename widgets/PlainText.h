#pragma once

#include "platform/AlertPresenter.h"

#include <QLabel>
#include <QMessageBox>

inline QMessageBox::Icon messageBoxIcon(AlertStyle style)
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
inline void showAsPlainText(QWidget &dialog)
{
    const auto labels = dialog.findChildren<QLabel *>();
    for (auto *const label : labels)
        label->setTextFormat(Qt::PlainText);
}
