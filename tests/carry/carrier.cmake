# The program that writes and reads what is carried.
set(carrier_tests ${CMAKE_CURRENT_LIST_DIR}/..)
add_executable(mortise-carrier ${CMAKE_CURRENT_LIST_DIR}/carrier.cpp
  ${carrier_tests}/support/goldenStreams.cpp ${carrier_tests}/support/randomItems.cpp
  ${carrier_tests}/support/streamItems.cpp)
target_include_directories(mortise-carrier PRIVATE ${carrier_tests})
target_compile_definitions(mortise-carrier PRIVATE MORTISE_TEST_DATA_DIR="${carrier_tests}/reference")
target_link_libraries(mortise-carrier PRIVATE mortise::mortise)
