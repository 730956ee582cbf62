# cmake -D PREFIX=dir -D WORK=dir -D GENERATOR=name -D COMPILER=file -P templateModule.cmake
# Somebody copies the module that comes with the library, builds it, runs its test and installs it.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK})
file(COPY ${PREFIX}/share/mortise/template-module DESTINATION ${WORK})
set(source ${WORK}/template-module)

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${source} COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
endfunction()

run(${CMAKE_COMMAND} -S . -B build -G ${GENERATOR} -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_PREFIX_PATH=${PREFIX}
  -D CMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Werror")
run(${CMAKE_COMMAND} --build build)
run(${CMAKE_CTEST_COMMAND} --test-dir build --output-on-failure --no-tests=error)
run(${CMAKE_COMMAND} --install build --prefix ${WORK}/installed)
file(GLOB_RECURSE libraries ${WORK}/installed/*/libgreeter.so)
if(NOT libraries)
  message(FATAL_ERROR "The library was not installed")
endif()
