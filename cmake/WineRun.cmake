# The Windows build's programs run under Wine: every test executable and GoogleTest's test
# discovery are started through build-win/wine-run, which keeps a private Wine prefix in the
# build folder (build-win/wineprefix).
find_program(ARDEN_WINE NAMES wine wine64 REQUIRED)
find_program(ARDEN_WINESERVER NAMES wineserver
  HINTS /usr/lib/wine /usr/lib/x86_64-linux-gnu/wine /usr/lib/wine/wine64 REQUIRED)
set(ARDEN_WINE_PREFIX ${CMAKE_BINARY_DIR}/wineprefix)
configure_file(${CMAKE_CURRENT_LIST_DIR}/wine-run.sh.in ${CMAKE_BINARY_DIR}/wine-run
  @ONLY FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_BINARY_DIR}/wine-run)
