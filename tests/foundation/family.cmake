# The error tests compare against libcurl's own wording.
target_link_libraries(${ZT_TEST_TARGET} PRIVATE CURL::libcurl)
