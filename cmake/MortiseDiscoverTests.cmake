# Read by ctest: turns the list of a GoogleTest program into entries.
#
# granularity: 'case' makes one entry for each case, except that the instances of a parameterised or typed suite run
#              together; 'suite' makes one for each suite, for builds in which a process start is slow.
# labels:      by the name of suite or case: *Property*, *Model* are `property`, *Fault* is `fault`, *Slow* is `slow`, all
#              others `unit`; `label` overrides.
# limits:      every entry ends after a time, a hanging test never hangs the run.

cmake_policy(VERSION 3.25)

if(NOT EXISTS ${program})
  add_test(${prefix}not-built ${program})
  return()
endif()

set(case_limit 120)
set(suite_limit 600)

execute_process(COMMAND ${emulator} ${program} --gtest_list_tests
  OUTPUT_VARIABLE listing RESULT_VARIABLE result ERROR_VARIABLE errors TIMEOUT 120)
if(NOT result EQUAL 0)
  message("${program} --gtest_list_tests failed: ${result}\n${errors}")
  add_test(${prefix}not-listed ${program} --gtest_list_tests)
  return()
endif()

# What follows "#" shows parameters, which may hold anything.
string(REGEX REPLACE "#[^\n]*" "" listing "${listing}")
string(REGEX REPLACE "[][;]" "_" listing "${listing}")
string(REPLACE "\n" ";" lines "${listing}")

macro(mortise_entry name filter limit)
  add_test("${prefix}${name}" ${emulator} ${program} "--gtest_filter=${filter}" --gtest_also_run_disabled_tests
    --gtest_brief=1)
  if(label)
    set(kind ${label})
  elseif("${name}" MATCHES "Property|Model")
    set(kind property)
  elseif("${name}" MATCHES "Fault")
    set(kind fault)
  elseif("${name}" MATCHES "Slow")
    set(kind slow)
  else()
    set(kind unit)
  endif()
  set_tests_properties("${prefix}${name}" PROPERTIES TIMEOUT ${limit} LABELS "${kind}" WORKING_DIRECTORY "${directory}")
  if(NOT "${limit}" EQUAL suite_limit) # one skipped case does not make its suite a skipped one
    set_tests_properties("${prefix}${name}" PROPERTIES SKIP_REGULAR_EXPRESSION "\\[  SKIPPED \\]")
  endif()
  if(environment)
    set_tests_properties("${prefix}${name}" PROPERTIES ENVIRONMENT "${environment}")
  endif()
endmacro()

set(grouped FALSE)
foreach(line IN LISTS lines)
  if(line MATCHES "^([^ ]+)\\. *$")
    set(suite ${CMAKE_MATCH_1})
    set(grouped FALSE)
    if(granularity STREQUAL "suite")
      set(grouped TRUE)
      mortise_entry(${suite} "${suite}.*" ${suite_limit})
    elseif(suite MATCHES "/")
      set(grouped TRUE)
      mortise_entry(${suite} "${suite}.*" ${suite_limit})
    endif()
  elseif(line MATCHES "^  ([^ ]+) *$" AND NOT grouped)
    mortise_entry(${suite}.${CMAKE_MATCH_1} "${suite}.${CMAKE_MATCH_1}" ${case_limit})
  endif()
endforeach()
