#pragma once

#include "ExitCode.h"
#include "Options.h"
#include "Output.h"

// One function per command of the program.

ExitCode listPlugins(const GlobalOptions &options, Output &output);
ExitCode showPlugin(const GlobalOptions &options, const InfoOptions &info, Output &output);
ExitCode showMenu(const GlobalOptions &options, Output &output);
ExitCode editPlugin(const GlobalOptions &options, const EditOptions &edit, Output &output);
ExitCode runCommand(const GlobalOptions &options, const RunOptions &run, Output &output);
ExitCode supplyData(const GlobalOptions &options, const SupplyOptions &supply, Output &output);
ExitCode enablePlugins(const GlobalOptions &options, const EnablingOptions &enabling, Output &output);
ExitCode showState(const GlobalOptions &options, Output &output);
ExitCode showBlocklist(const GlobalOptions &options, Output &output);
ExitCode updateBlocklist(const GlobalOptions &options, Output &output);
ExitCode checkUpdates(const GlobalOptions &options, Output &output);
ExitCode downloadUpdates(const GlobalOptions &options, const DownloadOptions &download, Output &output);
ExitCode installUpdate(const GlobalOptions &options, const InstallOptions &install, Output &output);
ExitCode clearUpdates(const GlobalOptions &options, Output &output);
ExitCode watchPlugins(const GlobalOptions &options, Output &output);
ExitCode listenOnPort(const PortOptions &port, Output &output);
ExitCode sendToPort(const PortOptions &port, Output &output);
ExitCode unpackArchive(const UnpackOptions &unpack, Output &output);
ExitCode exportPlugin(const GlobalOptions &options, const ExportOptions &exporting, Output &output);
ExitCode createNewPlugin(const GlobalOptions &options, const CreateOptions &create, Output &output);
ExitCode validatePlugins(const ValidateOptions &validate, Output &output);
ExitCode testPlugins(const GlobalOptions &options, const TestOptions &test, Output &output);
ExitCode packPlugin(const GlobalOptions &options, const PackOptions &pack, Output &output);
ExitCode compareVersions(const CompareVersionsOptions &versions, Output &output);
ExitCode showDemo(const GlobalOptions &options, Output &output);
