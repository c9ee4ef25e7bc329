#pragma once

#include "commands/CoreModules.h"
#include "platform/JSON.h"

#include <optional>

/// What all bundles of one reload share: the parser's memory, and the core modules, which are looked up once.
class PluginLoading
{
public:
    JSONParser &parser() { return m_parser; }
    const COScript::CoreModules &coreModules()
    {
        if (!m_coreModules)
            m_coreModules = coreModulesOfApplication();
        return *m_coreModules;
    }

private:
    JSONParser m_parser;
    std::optional<COScript::CoreModules> m_coreModules;
};
