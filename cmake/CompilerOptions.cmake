# Warning and sanitizer settings shared by the library, the tools, the tests and the benchmarks.
function(zt_apply_compiler_options target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
  if(ZT_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  zt_apply_sanitizers(${target})
endfunction()

function(zt_apply_sanitizers target)
  if(ZT_SANITIZE)
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL "INTERFACE_LIBRARY")
      target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer)
      target_link_options(${target} PUBLIC -fsanitize=address,undefined -fno-sanitize-recover=all)
    endif()
  endif()
endfunction()
