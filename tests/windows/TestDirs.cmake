# The Windows build runs this folder only: its own comparisons with the Windows functions and
# the core's existing tests, built from their own folders' sources (ExistingTests.cmake).
set(test_dirs windows)
