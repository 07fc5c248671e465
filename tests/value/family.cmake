# Scenarios that need a process in which no name has been interned yet: one process each.
add_executable(test_value_fresh ${CMAKE_CURRENT_LIST_DIR}/fresh/main.cpp)
target_link_libraries(test_value_fresh PRIVATE ztcommon_static)
zt_apply_compiler_options(test_value_fresh)
foreach(scenario first-name generate-id)
  add_test(NAME value.fresh_process.${scenario} COMMAND test_value_fresh ${scenario})
  set_tests_properties(value.fresh_process.${scenario} PROPERTIES LABELS value)
endforeach()

# The generated name tables must match their data file.
find_package(Python3 COMPONENTS Interpreter)
if(Python3_FOUND)
  add_test(NAME value.generated_tables_current
           COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/scripts/gen_builtin_names.py --check)
  set_tests_properties(value.generated_tables_current PROPERTIES LABELS value)
endif()
