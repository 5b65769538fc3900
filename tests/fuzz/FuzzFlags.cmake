# Flags of the fuzz build (-DARDEN_FUZZ=ON, clang only): the core is compiled with libFuzzer's
# coverage instrumentation and with AddressSanitizer and UndefinedBehaviorSanitizer, so a
# memory error or undefined behaviour stops the fuzzer with the input that caused it.
if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "The fuzz build needs clang's libFuzzer: configure it with -DCMAKE_CXX_COMPILER=clang++ "
                      "(Debian package clang), not ${CMAKE_CXX_COMPILER_ID}.")
endif()
add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined
                    -fno-omit-frame-pointer)
add_link_options(-fsanitize=address,undefined)

# libFuzzer's runtime comes with clang's runtime libraries (Debian: libclang-rt-14-dev, which
# the clang package recommends); say so plainly when it is missing.
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_LINK_OPTIONS -fsanitize=fuzzer)
check_cxx_source_compiles("
#include <cstddef>
#include <cstdint>
extern \"C\" int LLVMFuzzerTestOneInput(const std::uint8_t*, std::size_t) { return 0; }" ARDEN_HAVE_LIBFUZZER)
unset(CMAKE_REQUIRED_LINK_OPTIONS)
if(NOT ARDEN_HAVE_LIBFUZZER)
  message(FATAL_ERROR "clang cannot link with -fsanitize=fuzzer: install clang's runtime libraries "
                      "(Debian: apt-get install libclang-rt-14-dev).")
endif()
