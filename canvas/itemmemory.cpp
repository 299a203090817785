#include "canvas/itemmemory.h"

#if defined(__SANITIZE_ADDRESS__)
#define KYTSTUDIO_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KYTSTUDIO_ADDRESS_SANITIZER
#endif
#endif

std::pmr::memory_resource* itemMemory()
{
#ifdef KYTSTUDIO_ADDRESS_SANITIZER
    // AddressSanitizer detects use after free only if each object has its own heap block.
    return std::pmr::new_delete_resource();
#else
    // Never deleted: items may outlive every static object.
    static auto* const pool = new std::pmr::unsynchronized_pool_resource;
    return pool;
#endif
}
