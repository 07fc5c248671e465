// Symbol visibility: the library is built with hidden visibility, and every class or function
// of the public interface is marked ZT_EXPORT.
#pragma once

#define ZT_EXPORT __attribute__((visibility("default")))
