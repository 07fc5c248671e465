# libxml2 as the peer of the tree benchmark, when it is installed.
find_package(LibXml2 QUIET)
if(LibXml2_FOUND)
  target_link_libraries(${ZT_BENCH_TARGET} PRIVATE LibXml2::LibXml2)
  target_compile_definitions(${ZT_BENCH_TARGET} PRIVATE ZT_BENCH_HAVE_LIBXML2)
else()
  message(STATUS "libxml2 not found: bench_dom runs without its peer")
endif()
