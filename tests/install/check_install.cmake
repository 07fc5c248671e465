# Installs the build into a scratch prefix, then configures, builds and runs a tiny consumer
# through find_package(ZtCommon CONFIG) and compiles it once more through pkg-config.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run_step)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "step failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  set(step_output "${out}" PARENT_SCOPE)
endfunction()

run_step(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
run_step(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/consumer -G Ninja
         -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Release)
run_step(${CMAKE_COMMAND} --build ${WORK_DIR}/consumer)
run_step(${WORK_DIR}/consumer/consumer)
if(NOT step_output MATCHES "consumer ok")
  message(FATAL_ERROR "consumer printed: ${step_output}")
endif()

# The same program built through pkg-config only.
find_program(PKG_CONFIG pkg-config REQUIRED)
set(ENV{PKG_CONFIG_PATH} "${prefix}/lib/pkgconfig:${prefix}/lib/x86_64-linux-gnu/pkgconfig")
run_step(${PKG_CONFIG} --cflags --libs ztcommon)
string(STRIP "${step_output}" flags)
separate_arguments(flags UNIX_COMMAND "${flags}")
run_step(c++ ${CONSUMER_DIR}/main.cpp -o ${WORK_DIR}/consumer-pc ${flags})
file(GLOB libdirs ${prefix}/lib ${prefix}/lib/x86_64-linux-gnu)
string(REPLACE ";" ":" libpath "${libdirs}")
set(ENV{LD_LIBRARY_PATH} "${libpath}")
run_step(${WORK_DIR}/consumer-pc)
if(NOT step_output MATCHES "consumer ok")
  message(FATAL_ERROR "pkg-config consumer printed: ${step_output}")
endif()
message(STATUS "installed package works")
