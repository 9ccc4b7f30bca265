#pragma once

#include <QStringList>

// One function per subcommand, each in a file of its own.

int convertCommand(const QStringList &arguments);
int crystalFieldCommand(const QStringList &arguments);
int fitLevelsCommand(const QStringList &arguments);
int fitOmegaCommand(const QStringList &arguments);
int fitQdcCommand(const QStringList &arguments);
int fitStarkCommand(const QStringList &arguments);
int indicesCommand(const QStringList &arguments);
int juddOfeltCommand(const QStringList &arguments);
int levelsCommand(const QStringList &arguments);
int omegaCommand(const QStringList &arguments);
int omegaExpCommand(const QStringList &arguments);
int organizeCommand(const QStringList &arguments);
int runCommand(const QStringList &arguments);
int showCommand(const QStringList &arguments);
int spectrumCommand(const QStringList &arguments);
int sphereCommand(const QStringList &arguments);
int starkCommand(const QStringList &arguments);
int statesCommand(const QStringList &arguments);
int tripletCommand(const QStringList &arguments);
int yieldCommand(const QStringList &arguments);
