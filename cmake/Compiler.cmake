# What every target of this project is compiled with.
add_library(project_options INTERFACE)
target_include_directories(project_options INTERFACE $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}>)
target_compile_features(project_options INTERFACE cxx_std_20)
target_compile_options(project_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
target_compile_definitions(project_options INTERFACE
  QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

# What the linker has resolved cannot be redirected by a fault later.
target_link_options(project_options INTERFACE LINKER:-z,relro LINKER:-z,now)

if(INTERACTIVE_SANITIZE STREQUAL "address")
  target_compile_options(project_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(project_options INTERFACE -fsanitize=address,undefined)
elseif(INTERACTIVE_SANITIZE STREQUAL "thread")
  target_compile_options(project_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(project_options INTERFACE -fsanitize=thread)
elseif(INTERACTIVE_SANITIZE STREQUAL "fuzz")
  # What the fuzzer follows, and what lines it reached.
  set(instrumentation
    -fsanitize=address,undefined,fuzzer-no-link -fno-sanitize-recover=all -fno-omit-frame-pointer
    -fprofile-instr-generate -fcoverage-mapping)
  target_compile_options(project_options INTERFACE ${instrumentation})
  target_link_options(project_options INTERFACE ${instrumentation})
elseif(NOT INTERACTIVE_SANITIZE STREQUAL "")
  message(FATAL_ERROR "INTERACTIVE_SANITIZE must be empty, address, thread or fuzz, not '${INTERACTIVE_SANITIZE}'")
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
