# What `cmake --install` lays out: the library, the headers that a host may include, and the package configuration.
include(CMakePackageConfigHelpers)

# What a host may use, and what those headers include. Everything else is free to change.
set(korvan_public_headers
    bundles/CPUArchitecture.h
    bundles/KRPluginBundle.h
    bundles/KRPluginBundleIconInfo.h
    bundles/PluginTable.h
    commands/CommandEntry.h
    commands/CommandHandlers.h
    commands/CommandLoading.h
    commands/CommandTable.h
    commands/DataSuppliers.h
    commands/DeprecatedChannelState.h
    commands/KRPluginCommand.h
    commands/KRPluginCommandBundle.h
    commands/KRPluginCommandKeys.h
    commands/KRPluginCommandManager.h
    commands/KRPluginCommandSpecifier.h
    commands/KRPluginDebugController.h
    commands/KRPluginLogAction.h
    commands/KRPluginPortMessaging.h
    commands/KRPluginScript.h
    commands/KRPluginStandaloneScript.h
    commands/UserInfoOwner.h
    localization/KorvanPluginManagerLocalization.h
    localization/KorvanPluginManagerTranslator.h
    manager/KRPluginManager.h
    manager/PluginEditor.h
    manager/RunningCommand.h
    platform/AlertPresenter.h
    platform/Export.h
    platform/FileWrapper.h
    platform/JSONText.h
    platform/KRError.h
    platform/KRImageData.h
    platform/LTAppEnvironment.h
    platform/LocalMessagePort.h
    platform/LogMessages.h
    platform/LTCompareVersions.h
    platform/MainQueue.h
    platform/Menu.h
    platform/MenuItem.h
    platform/MenuShortcut.h
    platform/NotificationCenter.h
    platform/OpenDocuments.h
    platform/OrderedDictionary.h
    platform/PropertyList.h
    platform/QZHardwareInfo.h
    platform/Result.h
    platform/Snapshot.h
    platform/UserDefaults.h
    platform/UserPresenter.h
    platform/VirtualMainQueue.h
    platform/archive/LTZipReader.h
    platform/archive/ZipBudget.h
    platform/monitoring/FolderMonitorOptions.h
    platform/monitoring/KRFolderMonitor.h
    platform/script/CODebugController.h
    platform/script/COFlowDelegate.h
    platform/script/COPrintController.h
    platform/script/COScript.h
    platform/script/ScriptActivity.h
    platform/script/ScriptCall.h
    platform/script/ScriptChecker.h
    platform/script/ScriptCallTrace.h
    platform/script/ScriptClass.h
    platform/script/ScriptCoreModules.h
    platform/script/ScriptDictionary.h
    platform/script/ScriptEvents.h
    platform/script/ScriptException.h
    platform/script/ScriptHost.h
    platform/script/ScriptObject.h
    platform/script/ScriptOutline.h
    platform/script/ScriptProfiler.h
    platform/script/ScriptSignature.h
    platform/script/ScriptValue.h
    platform/script/SourceOffset.h
    platform/script/ValueText.h
    state/BlocklistUpdate.h
    state/IncompatibleVersions.h
    state/KRPluginManagingState.h
    updates/ArchiveExtraction.h
    updates/KRPluginUpdater.h
    updates/KRPluginUpdaterImplementation.h
    updates/KRPluginVersions.h
    updates/PluginDownloadProgress.h
    updates/PluginUpdateHandlers.h
    updates/ReportingUpdater.h
    updates/UpdatingInfo.h
    updates/UpdatingInfoError.h
    updates/VersionsDictionary.h)

install(TARGETS KorvanPluginManager EXPORT KorvanPluginManagerTargets)
foreach(header IN LISTS korvan_public_headers)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/KorvanPluginManager/${folder})
endforeach()

set(korvan_package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/KorvanPluginManager)
install(EXPORT KorvanPluginManagerTargets NAMESPACE Korvan:: DESTINATION ${korvan_package_folder})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/KorvanPluginManagerConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/KorvanPluginManagerConfig.cmake INSTALL_DESTINATION ${korvan_package_folder})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/KorvanPluginManagerConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/KorvanPluginManagerConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/KorvanPluginManagerConfigVersion.cmake
    DESTINATION ${korvan_package_folder})
