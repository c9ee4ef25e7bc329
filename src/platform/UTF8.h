#pragma once

#include <QByteArray>

bool isValidUTF8(const QByteArray &bytes);
