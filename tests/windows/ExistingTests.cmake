# The core's own tests, built for Windows from their folders' sources as they are, minus the
# files that rest on POSIX facilities Windows does not have. Each exclusion says why; what the
# left-out files guard on Linux is covered on Windows by this folder's own tests where it
# applies to Windows at all.
set(_tests ${PROJECT_SOURCE_DIR}/tests)

# arden_windows_existing_tests(<name> <folder> LIBS ... EXCLUDE <file> ...)
function(arden_windows_existing_tests name folder)
  cmake_parse_arguments(E "" "" "LIBS;EXCLUDE" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${_tests}/${folder}/*.cpp)
  foreach(excluded ${E_EXCLUDE})
    list(REMOVE_ITEM sources ${_tests}/${folder}/${excluded})
  endforeach()
  arden_add_test(${name} SOURCES ${sources} LIBS ${E_LIBS} LABELS core)
endfunction()

arden_windows_existing_tests(test_support core/support LIBS arden_support
  # Owner, group and mode kept across a rewrite, FIFOs, hard links and unwritable folders
  # checked as the unprivileged user: POSIX ownership and permissions (chown, mkfifo).
  # The Windows write (ReplaceFileW) is checked by test_windows_judge and the CLI scripts.
  EXCLUDE SafeSaveTest.cpp)
arden_windows_existing_tests(test_shell core/shell LIBS arden_shell)
arden_windows_existing_tests(test_hardware core/hardware LIBS arden_hardware arden_config arden_shell)
arden_windows_existing_tests(test_config core/config LIBS arden_config arden_shell
  # Saves refused to the unprivileged user and a file's owner kept: POSIX users (chown, a
  # child process as "nobody").
  EXCLUDE SaveFlowTest.cpp)
arden_windows_existing_tests(test_disks core/disks LIBS arden_disks arden_shell
  # Disk creation on a full file system: mounts a small tmpfs (sys/mount.h).
  # Sparse extents measured in allocated blocks (struct stat's st_blocks).
  EXCLUDE DiskCreatorTest.cpp SparseExtentTest.cpp)
# tests/cli is not built: its runner starts the program with fork and waitpid (sys/wait.h).
# The Windows program is run by this folder's scripts under Wine instead.
