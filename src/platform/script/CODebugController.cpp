#include "platform/script/CODebugController.h"

#include "platform/LTAppEnvironment.h"
#include "platform/script/ValueText.h"

namespace {

std::shared_ptr<CODebugControllerDelegate> &currentDelegate()
{
    static std::shared_ptr<CODebugControllerDelegate> delegate;
    return delegate;
}

} // namespace

CODebugControllerDelegate::~CODebugControllerDelegate() = default;

void CODebugController::setDelegate(std::shared_ptr<CODebugControllerDelegate> delegate)
{
    currentDelegate() = std::move(delegate);
}

void CODebugController::output(const QString &format, const QVariantList &args)
{
    if (const auto delegate = currentDelegate())
        return delegate->output(format, args);
    auto line = format;
    for (const auto &argument : args)
        line += u' ' + descriptionOfValue(argument);
    LTAppEnvironment::current().systemLog(line);
}
