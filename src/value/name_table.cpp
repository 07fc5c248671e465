// ZtNameTable: built-in lookups without locking, run-time interning under the process-wide
// name-table lock, and the shared table every ZtName uses.
#include <sys/random.h>

#include <chrono>

#include "util/cleanup_registry.h"
#include "value/builtin_names.h"
#include "value/name_hash.h"
#include "value/name_table_internal.h"
#include "value/runtime_names.h"

namespace ZtCommonNS {

namespace {

// A seed the run-time hash lane draws at load, so that colliding names cannot be prepared in
// advance. Falls back on the clock when the kernel gives no random bytes.
std::uint64_t drawSeed() {
    std::uint64_t seed = 0;
    if (getrandom(&seed, sizeof seed, GRND_NONBLOCK) != static_cast<ssize_t>(sizeof seed))
        seed = static_cast<std::uint64_t>(
                   std::chrono::steady_clock::now().time_since_epoch().count()) *
               NameHash::kMulLength;
    return seed;
}

// Built before default-priority static initialisers (which may intern names) and destroyed
// after them; the shared table goes at unload, before the lock it needs.
struct NameTableGlobals {
    ZtLock lock;
    const std::uint64_t runtimeSeed = drawSeed();
};
__attribute__((init_priority(102))) NameTableGlobals globals;
ZtLock& nameTableLock = globals.lock;
const std::uint64_t& runtimeSeed = globals.runtimeSeed;
ZtNameTable* sharedTable = nullptr; // guarded by nameTableLock

struct SharedTableReaper {
    SharedTableReaper() { registerCleanupHandler(&ZtNameTable::cleanup); }
    SharedTableReaper(const SharedTableReaper&) = delete;
    SharedTableReaper& operator=(const SharedTableReaper&) = delete;
    ~SharedTableReaper() { ZtNameTable::cleanup(); }
};
__attribute__((init_priority(102))) SharedTableReaper reaper;

// The text's units, or null for the empty or bogus text (which names nothing).
const char16_t* unitsOf(const UnicodeString& text, std::int32_t& n) {
    n = text.length();
    return n > 0 ? text.getBuffer() : nullptr;
}

// The built-in number of the n units, else what `runtime` gives for their run-time hash, called
// under the name-table lock.
template <class Runtime> ZtNameEnum numberOf(const char16_t* s, std::int32_t n, Runtime runtime) {
    if (std::int32_t number = BuiltinNames::find(s, n))
        return static_cast<ZtNameEnum>(number);
    std::uint64_t h = NameHash::hashUnits(s, n, runtimeSeed);
    ZtMutex guard(nameTableLock);
    return static_cast<ZtNameEnum>(runtime(h));
}

ZtNameTable* sharedTableLocked() {
    if (!sharedTable)
        sharedTable = new ZtNameTable;
    return sharedTable;
}

} // namespace

ZtLock& NameTableInternal::lock() {
    return nameTableLock;
}

ZtNameEnum NameTableInternal::internShared(const char16_t* s, std::int32_t n) {
    return numberOf(
        s, n, [&](std::uint64_t h) { return sharedTableLocked()->storage_->intern(s, n, h); });
}

ZtNameEnum NameTableInternal::findShared(const char16_t* s, std::int32_t n) {
    return numberOf(s, n, [&](std::uint64_t h) {
        return sharedTable ? sharedTable->storage_->find(s, n, h) : 0;
    });
}

ZtNameEnum NameTableInternal::sharedLast() {
    ZtMutex guard(nameTableLock);
    return sharedTable ? sharedTable->getNameLast() : NM_LAST_BUILTIN;
}

ZtNameTable::ZtNameTable() : storage_(new Storage(NM_FIRST_RUNTIME)) {}

ZtNameTable::~ZtNameTable() {
    {
        ZtMutex guard(nameTableLock);
        if (sharedTable == this)
            sharedTable = nullptr;
    }
    delete storage_;
}

ZtNameEnum ZtNameTable::getNameEnum(const UnicodeString& text) {
    std::int32_t n = 0;
    const char16_t* s = unitsOf(text, n);
    if (!s)
        return NM_EMPTY_NAME;
    return numberOf(s, n, [&](std::uint64_t h) { return storage_->intern(s, n, h); });
}

ZtNameEnum ZtNameTable::lookupName(const UnicodeString& text) const {
    std::int32_t n = 0;
    const char16_t* s = unitsOf(text, n);
    if (!s)
        return NM_EMPTY_NAME;
    return numberOf(s, n, [&](std::uint64_t h) { return storage_->find(s, n, h); });
}

const UnicodeString& ZtNameTable::getNameString(ZtNameEnum number) const {
    if (number <= NM_LAST_BUILTIN)
        return getBuiltinNameString(number);
    ZtMutex guard(nameTableLock);
    const UnicodeString* text = storage_->string(number);
    return text ? *text : ZtEmptyString::getEmptyString();
}

ZtNameEnum ZtNameTable::getNameLast() const {
    ZtMutex guard(nameTableLock);
    return static_cast<ZtNameEnum>(storage_->last());
}

ZtNameEnum ZtNameTable::getBuiltinNameEnum(const UnicodeString& text) {
    std::int32_t n = 0;
    const char16_t* s = unitsOf(text, n);
    return s ? static_cast<ZtNameEnum>(BuiltinNames::find(s, n)) : NM_EMPTY_NAME;
}

const UnicodeString& ZtNameTable::getBuiltinNameString(ZtNameEnum number) {
    if (number < NM_EMPTY_NAME || number > NM_LAST_BUILTIN)
        return ZtEmptyString::getEmptyString();
    return BuiltinNames::string(number);
}

ZtNameEnum ZtNameTable::getSharedNameEnum(const UnicodeString& text) {
    std::int32_t n = 0;
    const char16_t* s = unitsOf(text, n);
    return s ? NameTableInternal::internShared(s, n) : NM_EMPTY_NAME;
}

const UnicodeString& ZtNameTable::getSharedNameString(ZtNameEnum number) {
    if (number <= NM_LAST_BUILTIN)
        return getBuiltinNameString(number);
    ZtMutex guard(nameTableLock);
    const UnicodeString* text = sharedTable ? sharedTable->storage_->string(number) : nullptr;
    return text ? *text : ZtEmptyString::getEmptyString();
}

ZtNameTable* ZtNameTable::getSharedNameTable() {
    ZtMutex guard(nameTableLock);
    return sharedTableLocked();
}

ZtNameTable* ZtNameTable::addRefSharedNameTable() {
    ZtMutex guard(nameTableLock);
    ZtNameTable* table = sharedTableLocked();
    table->addRef();
    return table;
}

void ZtNameTable::releaseSharedNameTable() {
    ZtMutex guard(nameTableLock);
    if (sharedTable)
        sharedTable->release(); // the destructor clears the pointer
}

void ZtNameTable::cleanup() {
    ZtMutex global;
    ZtMutex guard(nameTableLock);
    delete sharedTable; // the destructor clears the pointer
}

} // namespace ZtCommonNS
