#pragma once

#include "platform/UserPresenter.h"

#include <QString>

#include <optional>

/// Why a number cannot be the answer, as a sentence; nil when it can.
std::optional<QString> refusalOfNumber(const NumberPrompt &prompt, double number);
