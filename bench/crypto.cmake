# OpenSSL 3 is the peer the crypto benchmark compares against, when it is installed; without it
# only the library's own figures are printed.
find_package(OpenSSL 3 COMPONENTS Crypto)
if(OpenSSL_FOUND)
  target_link_libraries(${ZT_BENCH_TARGET} PRIVATE OpenSSL::Crypto)
  target_compile_definitions(${ZT_BENCH_TARGET} PRIVATE ZT_HAVE_OPENSSL=1)
endif()
