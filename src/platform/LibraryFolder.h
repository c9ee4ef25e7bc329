#pragma once

#include <QByteArray>

/// The folder that holds this library's file (or the program's, where the library is part of it). Any thread.
QByteArray libraryFolder();
