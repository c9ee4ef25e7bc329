#include "platform/script/COFlowDelegate.h"

COFlowDelegate::~COFlowDelegate() = default;
