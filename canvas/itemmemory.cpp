#include "canvas/itemmemory.h"

#if defined(__SANITIZE_ADDRESS__)
#define KYTSTUDIO_FINDS_MEMORY_ERRORS
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KYTSTUDIO_FINDS_MEMORY_ERRORS
#endif
#endif

std::pmr::memory_resource* itemMemory()
{
#ifdef KYTSTUDIO_FINDS_MEMORY_ERRORS
    // A sanitizer sees the use of an object after its end only where each has a piece of the heap to itself.
    return std::pmr::new_delete_resource();
#else
    // Left to the end of the process: items may outlive every static object.
    static auto* const pool = new std::pmr::unsynchronized_pool_resource;
    return pool;
#endif
}
