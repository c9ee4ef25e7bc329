#include "platform/script/COPrintController.h"

COPrintController::~COPrintController() = default;
