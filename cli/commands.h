#pragma once

#include <QStringList>

// One function per subcommand, each in a file of its own.

int omegaCommand(const QStringList &arguments);
