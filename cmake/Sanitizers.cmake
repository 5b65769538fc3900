# The sanitizer build (-DARDEN_SANITIZE=ON): everything compiled and linked with AddressSanitizer
# and UndefinedBehaviorSanitizer. Undefined behaviour aborts at once (no recovery), so a report
# fails the test that caused it; LeakSanitizer runs at the exit of every program.

set(ARDEN_SANITIZE_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)

function(arden_enable_sanitizers)
  add_compile_options(${ARDEN_SANITIZE_FLAGS})
  add_link_options(-fsanitize=address,undefined)
endfunction()

# Every executable below `dir` gets the sanitizers' default options compiled in, so a test run
# by hand (`ctest`, or the program itself) behaves as under `make test`; ASAN_OPTIONS,
# UBSAN_OPTIONS and LSAN_OPTIONS in the environment still override them.
function(arden_add_sanitizer_defaults dir)
  get_property(targets DIRECTORY ${dir} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
      target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/sanitize/SanitizerDefaults.cpp)
      target_compile_definitions(${target} PRIVATE
        ARDEN_LSAN_SUPPRESSIONS="${PROJECT_SOURCE_DIR}/tests/sanitize/lsan.supp")
    endif()
  endforeach()
  get_property(subdirs DIRECTORY ${dir} PROPERTY SUBDIRECTORIES)
  foreach(subdir ${subdirs})
    arden_add_sanitizer_defaults(${subdir})
  endforeach()
endfunction()
