# Text tables that are generated from ICU and checked in: `gen-text-tables` rebuilds them.
add_executable(zt_gen_jis_symbols EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/../../scripts/gen_jis_symbols.cpp)
target_link_libraries(zt_gen_jis_symbols PRIVATE ICU::uc)
add_custom_target(gen-text-tables
  COMMAND zt_gen_jis_symbols > ${CMAKE_CURRENT_LIST_DIR}/jis_symbols.inc
  COMMENT "Regenerating src/text/jis_symbols.inc from ICU's Japanese converters"
  VERBATIM)
