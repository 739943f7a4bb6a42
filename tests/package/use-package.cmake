file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "status ${status} of ${command}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix)
set(flags "")
if(SANITIZE STREQUAL "address")
  set(flags -fsanitize=address,undefined)
elseif(SANITIZE STREQUAL "thread")
  set(flags -fsanitize=thread)
endif()
# What is built is the page's own snippet, with the names of this plug-in in place of its own.
file(READ ${PAGE} page)
string(REGEX MATCH "```cmake\n([^`]*)```" snippet "${page}")
if(snippet STREQUAL "")
  message(FATAL_ERROR "no build snippet in ${PAGE}")
endif()
string(REPLACE "MyPlugin" "Square" snippet "${CMAKE_MATCH_1}")
file(COPY ${SOURCE}/Square.cpp DESTINATION ${WORK}/source)
file(WRITE ${WORK}/source/CMakeLists.txt "${snippet}")
run(${CMAKE_COMMAND} -S ${WORK}/source -B ${WORK}/build -G Ninja -D CMAKE_BUILD_TYPE=${BUILD_TYPE}
  -D CMAKE_PREFIX_PATH=${WORK}/prefix -D "CMAKE_CXX_FLAGS=${flags}")
run(${CMAKE_COMMAND} --build ${WORK}/build)

# The foreign plug-in stands beside the station's own one, which is found in the installed place.
run(${WORK}/prefix/${BIN}/station --headless --config ${SOURCE}/station.toml
  --plugin ${WORK}/build --operator ${SOURCE}/operator.lua)
if(NOT output MATCHES "system 0: square -> 49\n")
  message(FATAL_ERROR "the plug-in's function was not called:\n${output}")
endif()
