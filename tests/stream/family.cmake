# The command-line tool against coreutils (only where the tool is built).
if(TARGET ztc)
  add_test(NAME stream.ztc COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/check_ztc.sh $<TARGET_FILE:ztc>)
  set_tests_properties(stream.ztc PROPERTIES LABELS stream)
endif()
