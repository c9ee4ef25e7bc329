// In place of a module that is not needed here.
