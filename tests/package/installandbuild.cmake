# Installs the build into a folder of its own, builds the foreign host against it, moves the tree and runs the host:
# an installed tree works wherever it lies.
function(step what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(result)
    message(FATAL_ERROR "${what} failed (${result}):\n${output}")
  endif()
  message(STATUS "${what}: done")
endfunction()

file(REMOVE_RECURSE ${WORK})
set(flags "")
if(SANITIZE)
  set(flags "-fsanitize=${SANITIZE} -fno-omit-frame-pointer")
endif()
step("install" ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix)
step("configure" ${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/build -G ${GENERATOR}
  -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_BUILD_TYPE=${BUILD_TYPE} -DCMAKE_CXX_FLAGS=${flags}
  -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} -DCMAKE_INSTALL_PREFIX=${WORK}/prefix)
step("build" ${CMAKE_COMMAND} --build ${WORK}/build)
step("install the host" ${CMAKE_COMMAND} --install ${WORK}/build)
file(RENAME ${WORK}/prefix ${WORK}/moved)
step("run" ${WORK}/moved/bin/foreignhost)
