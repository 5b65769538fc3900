# Test cases of the core's own folders that cannot pass on Windows, left out of the Windows
# run by name (ctest's CTEST_CUSTOM_TESTS_IGNORE), each for the reason given. What they guard
# that applies to Windows is checked by this folder's tests (named after the arrow).
set(ARDEN_WINDOWS_EXCLUDED_TESTS
  # Another computer's registry is refused as unreachable: true of the POSIX store only; on
  # Windows cRegistry asks RegConnectRegistryW.
  cRegistryStore.CorruptOrUnwritableStore
  # The POSIX device maps: /dev nodes listed as paths. Windows reads the registry's device maps
  # -> RegistryDeviceMaps.HostPortsAreTheLocalMachinesMappedPorts.
  cRegistryDeviceMaps.ListTheHostsPortNodes
  HostPorts.ListsTheDeviceNodesOfBothMapsInOrder
  # The POSIX $TMPDIR rule with "/"; Windows takes GetTempPathW -> WindowsPaths.*.
  TempFolderRule.KeepsOrAddsTheTrailingSeparator
  # The expected settings path is built with "/"; Windows joins the folder and ArdenForge.ini
  # with "\" (the doubled separator kept) -> WindowsPaths.SettingsFileKeepsTheDoubledSeparator.
  LoadSettings.FirstRunStoresTheTemporaryFolderAndUsesDefaults
  SaveSettings.ReportsWhatCouldNotBeWritten
  SaveSettings.WritesTheTemporaryFoldersFileWithGapFreeFavorites
  # Expects a folder named in another letter case to be another folder, as on Linux; Windows
  # file names ignore case, so there the file is written relative (relativeToVmxFolder's
  # Windows rule).
  VmxWriter.FileNamesInTheMachinesFolderAreWrittenRelative
  # Expects the C library's "No such file or directory"; Windows gives its own text
  # -> WindowsPaths.AFailedWriteNamesTheFileAndKeepsTheOldOne.
  AtomicFile.FailureNamesTheFileAndKeepsTheOldOne
  # Shell scripts as programs, ":"-separated PATH lists, SIGTERM and SIGKILL
  # -> WindowsProcess.*.
  ProcessRunner.ExitCodeStandardErrorAndArgumentsAsGiven
  ProcessRunner.LookUpTakesTheFirstRunnableProgram
  ProcessRunner.AStopEndsTheProgramEvenWhenItIgnoresSigterm
  # Makes a symbolic link: Windows (and Wine) refuse without the privilege to create them.
  DiskChecks.AnyExistingFileOfTheDiskRefuses
  # A file name holding ":", which no Windows file name may hold.
  DiskNames.ARelativeNameReachesQemuImgAsAFile
  # Makes a growable disk with qemu-img.exe, which Debian does not package for Windows (the test
  # skips, and fails in CI). The disks of the Windows program are read back by Linux's qemu-img
  # -> windows_split_disk_qemu_check.
  DiskReader.DisksThisProgramMakesWithAwkwardNamesAndSizes)

string(REPLACE ";" "\" \"" _ignored "${ARDEN_WINDOWS_EXCLUDED_TESTS}")
file(WRITE ${CMAKE_BINARY_DIR}/CTestCustom.cmake
  "# Written by tests/windows/Excluded.cmake: see the reasons there.\nlist(APPEND CTEST_CUSTOM_TESTS_IGNORE \"${_ignored}\")\n")
