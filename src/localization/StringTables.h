#pragma once

#include <QString>
#include <QStringList>

/// The resource with the compiled string table for the first language that there is one for; empty when there is none.
/// The languages are BCP 47 names, the most wanted first.
QString stringTableForLanguages(const QStringList &languages);
