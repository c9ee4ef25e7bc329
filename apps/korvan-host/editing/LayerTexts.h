#pragma once

#include <QCoreApplication>

/// The names of what can be done with layers, in the user's language: LayerTexts::tr("Move").
struct LayerTexts
{
    Q_DECLARE_TR_FUNCTIONS(LayerTexts)
};
