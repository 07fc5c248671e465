# The predefined counter styles are compiled from CSS @counter-style rules by a generator.
# The style sheets are listed in order of precedence: a name is taken from the first sheet
# that defines it.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(ZT_COUNTER_STYLES_DIR ${CMAKE_CURRENT_SOURCE_DIR}/src/counter/styles)
set(ZT_COUNTER_STYLE_SHEETS
    ${ZT_COUNTER_STYLES_DIR}/library-styles.css
    ${ZT_COUNTER_STYLES_DIR}/css-counter-styles-3.css
    ${ZT_COUNTER_STYLES_DIR}/ready-made.css
    ${ZT_COUNTER_STYLES_DIR}/earlier-editions.css)
set(ZT_COUNTER_TABLE ${CMAKE_CURRENT_BINARY_DIR}/generated/counter/predefined_styles.cpp)
add_custom_command(
  OUTPUT ${ZT_COUNTER_TABLE}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/generated/counter
  COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/scripts/gen_counter_styles.py
          ${ZT_COUNTER_STYLES_DIR}/predefined-names.txt ${ZT_COUNTER_TABLE}
          ${ZT_COUNTER_STYLE_SHEETS}
  DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/scripts/gen_counter_styles.py
          ${ZT_COUNTER_STYLES_DIR}/predefined-names.txt ${ZT_COUNTER_STYLE_SHEETS}
  COMMENT "Compiling the predefined counter styles"
  VERBATIM)
list(APPEND ZT_GENERATED_SOURCES ${ZT_COUNTER_TABLE})
