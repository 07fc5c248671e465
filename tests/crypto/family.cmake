# OpenSSL serves the crypto tests as an independent oracle when it is installed; it is never
# linked into the library, and the tests that need it skip themselves without it.
find_package(OpenSSL 3 COMPONENTS Crypto)
if(OpenSSL_FOUND)
  target_link_libraries(${ZT_TEST_TARGET} PRIVATE OpenSSL::Crypto)
  target_compile_definitions(${ZT_TEST_TARGET} PRIVATE ZT_HAVE_OPENSSL=1)
endif()

# The command-line tool against coreutils' digest programs (only where the tool is built).
if(TARGET ztc)
  add_test(NAME crypto.ztc COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/check_ztc.sh $<TARGET_FILE:ztc>)
  set_tests_properties(crypto.ztc PROPERTIES LABELS crypto)
endif()
