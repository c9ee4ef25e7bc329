#pragma once

class Menu;

enum class SortExtent {
    TopLevel,
    /// Also all submenus, at any depth.
    Submenus
};

/// Orders the items by title as the user's language does, whatever their case; items of one title keep their order.
/// Separators come first, because their title is empty; this is deliberate. Main thread only.
void sortMenu(Menu &menu, SortExtent extent);
