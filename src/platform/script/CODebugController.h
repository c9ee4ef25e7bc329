#pragma once

#include "platform/Export.h"

#include <QString>
#include <QVariantList>

#include <memory>

/// Who takes the script engine's own debug output.
class KORVAN_EXPORT CODebugControllerDelegate
{
public:
    virtual ~CODebugControllerDelegate();
    virtual void output(const QString &format, const QVariantList &args) = 0;
};

/// The script engine's debug output: what is no script's log. Main thread only.
class KORVAN_EXPORT CODebugController
{
public:
    /// Shared by all sessions; null for none.
    static void setDelegate(std::shared_ptr<CODebugControllerDelegate> delegate);
    /// Hands the text to the delegate, or to the system log when there is none.
    static void output(const QString &format, const QVariantList &args = {});
};
