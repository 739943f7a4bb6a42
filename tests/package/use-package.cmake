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
run(${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/build -G Ninja -D CMAKE_BUILD_TYPE=${BUILD_TYPE}
  -D CMAKE_PREFIX_PATH=${WORK}/prefix -D "CMAKE_CXX_FLAGS=${flags}")
run(${CMAKE_COMMAND} --build ${WORK}/build)

# The foreign plug-in stands beside the station's own one, which is found in the installed place.
run(${WORK}/prefix/${BIN}/station --headless --config ${SOURCE}/station.toml
  --plugin ${WORK}/build --operator ${SOURCE}/operator.lua)
if(NOT output MATCHES "system 0: square -> 49\n")
  message(FATAL_ERROR "the plug-in's function was not called:\n${output}")
endif()
