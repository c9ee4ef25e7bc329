#pragma once

#include "platform/KRError.h"

#include <QByteArray>
#include <QString>

// What is said about installations that have failed. KRError() is a failure without a reason.

/// The log's line about an installed copy that cannot be moved.
QString movingAsideFailureLine(const KRError &reason);

/// The log's line about a new bundle that cannot be moved.
QString installationFailureLine(const KRError &reason, const QByteArray &from, const QByteArray &to);

/// The error that is reported for it.
KRError installationFailure(const KRError &reason);
