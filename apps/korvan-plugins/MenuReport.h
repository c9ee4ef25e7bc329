#pragma once

#include "Output.h"

#include <QVariantList>

class Menu;

/// The items as the program describes them, submenus and all; nests as deep as the menu.
QVariantList describeMenu(const Menu &menu);

/// The items for people: titles, shortcuts and the commands behind them.
void printMenu(const Menu &menu, Output &output);
