// Foundation of ZtCommon: the object base with type identifiers, intrusive reference counting
// and its smart pointer, locks, the shared empty and bogus strings, text holders with a cached
// byte encoding, the library's single exception type and message formatting.
#pragma once

#include <atomic>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include <unicode/unistr.h>

#include "ztcommon/export.h"

namespace ZtCommonNS {

using icu::UnicodeString;

// Static type identifiers. They are fixed numbers that callers compare against, never computed.
namespace ZtTypeId {
inline constexpr unsigned int ObjectBase = 0xDF537371u;
inline constexpr unsigned int RCObject = 0xD18D040Au;
inline constexpr unsigned int NameTable = 0xDF2E12FAu;
inline constexpr unsigned int NamedValueMap = 0x2D6DF390u;
inline constexpr unsigned int ValueArray = 0x5B81E171u;
inline constexpr unsigned int Node = 0x008DF8B6u;
inline constexpr unsigned int Document = 0x2A780AB6u;
inline constexpr unsigned int TextNode = 0xD8444919u;
inline constexpr unsigned int Element = 0x9B60777Du;
inline constexpr unsigned int DocumentFragment = 0xB7475C6Fu;
inline constexpr unsigned int ProcessingInstruction = 0x78626383u;
inline constexpr unsigned int Attr = 0x507DD55Fu;
inline constexpr unsigned int NodeIterable = 0x6D959880u;
inline constexpr unsigned int NodeList = 0xB426D516u;
inline constexpr unsigned int NamedNodeMap = 0xDE19E4A4u;
inline constexpr unsigned int ZipEntry = 0x3DBE4CC1u;
inline constexpr unsigned int ZipFileEntry = 0xD8C59E0Cu;
inline constexpr unsigned int XmlParser = 0x34A5686Cu;
inline constexpr unsigned int MSXmlParser = 0x7608EA26u; // reserved: no MSXML on Linux
inline constexpr unsigned int XmlSerializer = 0x5DCEE8F5u;
} // namespace ZtTypeId

// Root of every polymorphic class: a static type identifier and a chain of integer compares
// for checked down-casts, without RTTI.
class ZT_EXPORT ZtObjectBase {
public:
    ZtObjectBase() = default;
    ZtObjectBase(const ZtObjectBase&) = default;
    ZtObjectBase& operator=(const ZtObjectBase&) = default;
    virtual ~ZtObjectBase();

    virtual unsigned int getTypeID() const = 0;
    virtual bool isA(unsigned int id) const { return id == ZtTypeId::ObjectBase; }
    virtual UnicodeString getTypeName() const = 0;
    static constexpr unsigned int getStaticTypeID() { return ZtTypeId::ObjectBase; }
};

// Declares the identity of a concrete or abstract class in the isA chain. Use inside the class
// body: ZT_DECLARE_TYPE(ZtElement, ZtNode, ZtTypeId::Element).
#define ZT_DECLARE_TYPE_BASE(Class, Parent, Id)                                                    \
public:                                                                                            \
    static constexpr unsigned int getStaticTypeID() {                                              \
        return Id;                                                                                 \
    }                                                                                              \
    bool isA(unsigned int id) const override {                                                     \
        return id == (Id) || Parent::isA(id);                                                      \
    }

#define ZT_DECLARE_TYPE(Class, Parent, Id)                                                         \
    ZT_DECLARE_TYPE_BASE(Class, Parent, Id)                                                        \
    unsigned int getTypeID() const override {                                                      \
        return Id;                                                                                 \
    }                                                                                              \
    UnicodeString getTypeName() const override {                                                   \
        return UnicodeString(#Class, -1, US_INV);                                                  \
    }

// Intrusively, atomically reference-counted object. A new object has count 0; the first ZtPtr
// that takes it raises the count to 1 and the release that brings it below 1 destroys it.
class ZT_EXPORT ZtRCObject : public ZtObjectBase {
    ZT_DECLARE_TYPE_BASE(ZtRCObject, ZtObjectBase, ZtTypeId::RCObject)

public:
    int addRef() const { return __atomic_add_fetch(&refCount_, 1, __ATOMIC_SEQ_CST); }
    // Drops one reference; destroys the object when the count falls below 1 (not only at 0:
    // a count driven negative by an unbalanced removeRef still dies on the next release).
    int release() const {
        int n = __atomic_sub_fetch(&refCount_, 1, __ATOMIC_SEQ_CST);
        if (n < 1)
            delete this;
        return n;
    }
    int removeRef() const { return __atomic_sub_fetch(&refCount_, 1, __ATOMIC_SEQ_CST); }
    int getRefCount() const { return __atomic_load_n(&refCount_, __ATOMIC_SEQ_CST); }

    // Diagnostics hooks kept for host programs that call them; they print nothing.
    static void DebugPrintInstanceCount(const char* label);
    static void DebugPrintInstanceId(const char* label, int id);

protected:
    ZtRCObject() = default;
    // A copy is a new object: it starts unshared.
    ZtRCObject(const ZtRCObject& other) : ZtObjectBase(other) {}
    ZtRCObject& operator=(const ZtRCObject&) { return *this; }
    ~ZtRCObject() override;

    void clearRefCount() { refCount_ = 0; }
    // Plain decrement for objects not yet shared with another thread; never destroys.
    int decrementRefCount() { return --refCount_; }

private:
    mutable int refCount_ = 0;
};

// Smart pointer of one raw pointer; the count lives in the object. Assignment from a raw pointer
// of another static type is a checked down-cast through isA that yields null when it fails.
template <class T> class ZtPtr {
public:
    using element_type = T;

    ZtPtr() noexcept = default;
    ZtPtr(std::nullptr_t) noexcept {}
    ZtPtr(T* p) : p_(p) {
        if (p_)
            p_->addRef();
    }
    ZtPtr(const ZtPtr& other) : ZtPtr(other.p_) {}
    ZtPtr(ZtPtr&& other) noexcept : p_(std::exchange(other.p_, nullptr)) {}
    template <class U>
    requires std::convertible_to<U*, T*> ZtPtr(const ZtPtr<U>& other)
        : ZtPtr(static_cast<T*>(other.get())) {}
    template <class U>
    requires std::convertible_to<U*, T*> ZtPtr(ZtPtr<U>&& other)
    noexcept : p_(other.detach()) {}
    ~ZtPtr() {
        if (p_)
            p_->release();
    }

    // reset() takes the new reference before dropping the old one, so p = p is safe.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
    ZtPtr& operator=(const ZtPtr& other) { return reset(other.p_); }
    ZtPtr& operator=(ZtPtr&& other) noexcept {
        if (this != &other) {
            T* old = std::exchange(p_, std::exchange(other.p_, nullptr));
            if (old)
                old->release();
        }
        return *this;
    }
    ZtPtr& operator=(std::nullptr_t) { return reset(nullptr); }
    ZtPtr& operator=(T* p) { return reset(p); }
    // Checked down-cast from any reference-counted pointer.
    template <class U>
    requires(std::derived_from<U, ZtRCObject> && !std::convertible_to<U*, T*>) ZtPtr&
    operator=(U* p) {
        if (static_cast<const ZtRCObject*>(p) == static_cast<const ZtRCObject*>(p_))
            return *this;
        return reset(p && p->isA(T::getStaticTypeID()) ? static_cast<T*>(p) : nullptr);
    }
    template <class U>
    requires std::derived_from<U, ZtRCObject> ZtPtr& operator=(const ZtPtr<U>& other) {
        return *this = other.get();
    }

    // Checked down-cast of any pointer: null when the object is not a T.
    template <class U> static ZtPtr cast(U* p) {
        ZtPtr result;
        result = p;
        return result;
    }
    template <class U> static ZtPtr cast(const ZtPtr<U>& p) { return cast(p.get()); }

    T* get() const noexcept { return p_; }
    T* operator->() const noexcept { return p_; }
    T& operator*() const noexcept { return *p_; }
    operator T*() const noexcept { return p_; }
    bool isNull() const noexcept { return p_ == nullptr; }

    // Gives up the reference without releasing it; the caller now owns one count.
    T* detach() noexcept { return std::exchange(p_, nullptr); }

private:
    // Takes the new reference first and releases the old one last, so self-assignment is safe.
    ZtPtr& reset(T* p) {
        if (p)
            p->addRef();
        T* old = std::exchange(p_, p);
        if (old)
            old->release();
        return *this;
    }

    T* p_ = nullptr;
};

// A recursive lock: the owning thread may enter it again. Not copyable: a lock in use has no
// meaningful copy.
class ZT_EXPORT ZtLock {
public:
    ZtLock() = default;
    ZtLock(const ZtLock&) = delete;
    ZtLock& operator=(const ZtLock&) = delete;
    ~ZtLock() = default;

    void lock() { mutex_.lock(); }
    void unlock() { mutex_.unlock(); }
    bool tryLock() { return mutex_.try_lock(); }

    // The process-wide lock taken by a default-constructed ZtMutex.
    static ZtLock& getGlobalLock();

private:
    std::recursive_mutex mutex_;
};

// Scoped guard over a ZtLock; with a null lock it does nothing.
class ZT_EXPORT ZtMutex {
public:
    ZtMutex() : lock_(&ZtLock::getGlobalLock()) { lock(); }
    explicit ZtMutex(ZtLock& lock) : lock_(&lock) { this->lock(); }
    explicit ZtMutex(ZtLock* lock) : lock_(lock) { this->lock(); }
    ZtMutex(const ZtMutex&) = delete;
    ZtMutex& operator=(const ZtMutex&) = delete;
    ~ZtMutex() { unlock(); }

    static int interlockedIncrement(int& value) {
        return __atomic_add_fetch(&value, 1, __ATOMIC_SEQ_CST);
    }
    static int interlockedDecrement(int& value) {
        return __atomic_sub_fetch(&value, 1, __ATOMIC_SEQ_CST);
    }

private:
    void lock() {
        if (lock_)
            lock_->lock();
    }
    void unlock() {
        if (lock_)
            lock_->unlock();
    }

    ZtLock* lock_;
};

// The empty text, default of omitted text arguments throughout the library.
class ZT_EXPORT ZtEmptyString : public UnicodeString {
public:
    ZtEmptyString() = default;
    ZtEmptyString(const ZtEmptyString&) = default;
    ZtEmptyString& operator=(const ZtEmptyString&) = default;

    static const ZtEmptyString EMPTY_VALUE;
    static const ZtEmptyString& getEmptyString() { return EMPTY_VALUE; }
};

// An absent text (ICU's bogus state), as distinct from an empty one.
class ZT_EXPORT ZtBogusString : public UnicodeString {
public:
    ZtBogusString() { setToBogus(); }
    ZtBogusString(const ZtBogusString&) = default;
    ZtBogusString& operator=(const ZtBogusString&) = default;

    static const ZtBogusString BOGUS_VALUE;
    static const ZtBogusString& getBogusString() { return BOGUS_VALUE; }
};

// A Unicode text with a lazily built byte encoding in a named charset. The bytes are produced
// on demand and reused while neither the text nor the charset has changed since.
class ZT_EXPORT ZtCStr : public UnicodeString {
public:
    ZtCStr() = default;
    ZtCStr(const UnicodeString& text);
    // Text decoded from bytes; the bytes are kept, so asking for the same charset is free.
    ZtCStr(const std::string& bytes, const char* charset);
    ZtCStr(const char* bytes, const char* charset);
    // UTF-16 code units; a null pointer gives the empty text.
    ZtCStr(const char16_t* units, int32_t length);
    ZtCStr(const ZtCStr& other);
    ZtCStr& operator=(const ZtCStr& other);
    ZtCStr& operator=(const UnicodeString& text);
    ~ZtCStr() override;

    // The text in `charset` (null: the default charset, UTF-8). The reference stays valid
    // until the next call or the holder's destruction.
    const std::string& getBytes(const char* charset) const;
    // The same as a NUL-terminated string.
    const char* c_str(const char* charset) const { return getBytes(charset).c_str(); }
    // The charset of the bytes produced or given last, or null.
    const char* getCharset() const { return charset_; }

private:
    void setCharset(const char* charset) const;

    mutable std::string bytes_;
    mutable char* charset_ = nullptr;
    mutable UnicodeString snapshot_;
};

// A ZtCStr whose charset is always UTF-8.
class ZT_EXPORT ZtUtfStr : public ZtCStr {
public:
    ZtUtfStr() = default;
    ZtUtfStr(const UnicodeString& text) : ZtCStr(text) {}
    ~ZtUtfStr() override;

    const std::string& getBytes() const { return ZtCStr::getBytes("UTF-8"); }
    const char* c_str() const { return getBytes().c_str(); }
};

// Category of an error code (its upper six bits). Every code of this library has category 0.
enum ZtErrorCategory : unsigned short {
    ZtErrorCodeCOMMON = 0x0000,
};

// Severity computed from an error code, from the most to the least severe.
enum ZtErrorLevel : unsigned short {
    ZT_ERROR_LEVEL_FATAL = 0x000,
    ZT_ERROR_LEVEL_ERROR = 0x200,
    ZT_ERROR_LEVEL_WARNING = 0x300,
    ZT_ERROR_LEVEL_INFO = 0x380,
};

// Bits of an error code.
inline constexpr unsigned short ZT_ERROR_CATEGORY_MASK = 0xFC00;
inline constexpr unsigned short ZT_ERROR_NONFATAL_BIT = 0x0200;
inline constexpr unsigned short ZT_ERROR_LOWER_BIT = 0x0100;
inline constexpr unsigned short ZT_ERROR_LOWEST_BIT = 0x0080;
inline constexpr unsigned short ZT_ERROR_NUMBER_MASK = 0x007F;

ZT_EXPORT ZtErrorLevel getErrorLevel(unsigned short code);

// The library's single exception type: a 16-bit code, a message, the operation that raised it
// and, for errors found in input documents, a position. Thrown by value, caught by reference.
// It is also a std::exception whose what() gives the full message in UTF-8.
class ZT_EXPORT ZtError : public std::exception {
public:
    ZtError();
    ZtError(unsigned short code, const UnicodeString& rawMessage,
            const UnicodeString& source = ZtEmptyString::getEmptyString(), int line = -1,
            int column = -1, const UnicodeString& uri = ZtEmptyString::getEmptyString());
    ZtError(std::bad_alloc& e, const UnicodeString& source);
    ZtError(std::exception& e, const UnicodeString& source);
    ZtError(const ZtError& other);
    ZtError& operator=(const ZtError& other);
    ~ZtError() override;

    unsigned short getErrorCode() const { return code_; }
    void setErrorCode(unsigned short code) { code_ = code; }
    ZtErrorCategory getErrorCategory() const {
        return static_cast<ZtErrorCategory>(code_ & ZT_ERROR_CATEGORY_MASK);
    }
    ZtErrorLevel getErrorLevel() const { return ZtCommonNS::getErrorLevel(code_); }
    const UnicodeString& getRawMessage() const { return rawMessage_; }
    void setRawMessage(const UnicodeString& message) { rawMessage_ = message; }
    const UnicodeString& getSource() const { return source_; }
    void setSource(const UnicodeString& source) { source_ = source; }
    int getLineNumber() const { return line_; }
    void setLineNumber(int line) { line_ = line; }
    int getColumnNumber() const { return column_; }
    void setColumnNumber(int column) { column_ = column; }
    const UnicodeString& getUri() const { return uri_; }
    void setUri(const UnicodeString& uri) { uri_ = uri; }

    // "Line L, Col C, " (each part only when positive) followed by the URI.
    UnicodeString getPositionDescription() const;
    // The raw message, then a line feed and the position description when there is one.
    UnicodeString getMessage() const;
    // Stores `text` as the raw message, cutting off a trailing position description so that
    // setMessage(getMessage()) does not repeat the position.
    void setMessage(const UnicodeString& text);
    // Adds a line of text to the raw message.
    void appendMessage(const UnicodeString& text);
    // Throws a copy of this error when its code is fatal (not 0, non-fatal bit clear).
    void throwFatalError() const;

    const char* what() const noexcept override;

    // Module tag for getLastErrorMessage: error numbers are libcurl's CURLcode values.
    static void* const CURL_MODULE;
    // The system's text for an error number: with a null module the strerror text of the
    // errno value, with CURL_MODULE libcurl's text; white space trimmed; empty when unknown.
    static UnicodeString getLastErrorMessage(unsigned long errorNumber, void* module);

private:
    unsigned short code_ = 0;
    UnicodeString rawMessage_;
    UnicodeString source_;
    int line_ = -1;
    int column_ = -1;
    UnicodeString uri_;
    mutable std::string what_;
};

// A message text formatted with ICU MessageFormat from a pattern and five string arguments
// ({0} to {4}).
class ZT_EXPORT ZtMessage {
public:
    ZtMessage(const UnicodeString& pattern,
              const UnicodeString& a0 = ZtEmptyString::getEmptyString(),
              const UnicodeString& a1 = ZtEmptyString::getEmptyString(),
              const UnicodeString& a2 = ZtEmptyString::getEmptyString(),
              const UnicodeString& a3 = ZtEmptyString::getEmptyString(),
              const UnicodeString& a4 = ZtEmptyString::getEmptyString());
    // The pattern is UTF-8, the default code page.
    ZtMessage(const char* pattern, const UnicodeString& a0 = ZtEmptyString::getEmptyString(),
              const UnicodeString& a1 = ZtEmptyString::getEmptyString(),
              const UnicodeString& a2 = ZtEmptyString::getEmptyString(),
              const UnicodeString& a3 = ZtEmptyString::getEmptyString(),
              const UnicodeString& a4 = ZtEmptyString::getEmptyString());
    ZtMessage(const ZtMessage&) = default;
    ZtMessage& operator=(const ZtMessage&) = default;
    ~ZtMessage() = default;

    const UnicodeString& toString() const { return text_; }
    operator const UnicodeString&() const { return text_; }

private:
    UnicodeString text_;
};

} // namespace ZtCommonNS
