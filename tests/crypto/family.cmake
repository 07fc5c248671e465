# OpenSSL serves the crypto tests as an independent oracle when it is installed; it is never
# linked into the library, and the tests that need it skip themselves without it.
find_package(OpenSSL 3 COMPONENTS Crypto)
if(OpenSSL_FOUND)
  target_link_libraries(${ZT_TEST_TARGET} PRIVATE OpenSSL::Crypto)
  target_compile_definitions(${ZT_TEST_TARGET} PRIVATE ZT_HAVE_OPENSSL=1)
endif()
