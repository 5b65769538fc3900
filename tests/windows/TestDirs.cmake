# The test folders the Windows build compiles and runs under Wine: the core's and the command
# line's own tests, built from their sources as they are, and this folder's comparisons with
# the Windows functions. Left out: interop (it runs Linux tools on our files; the Windows
# program's files are checked by Linux's qemu-img from tests/windows instead), promises and
# gui (they need the desktop program, which the Windows build does not make), bench (figures
# of the Linux build are the ones reported).
set(test_dirs core/support core/shell core/hardware core/config core/disks cli windows)
