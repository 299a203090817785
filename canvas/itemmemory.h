#pragma once

#include <cstddef>
#include <memory_resource>

/// The memory pool of canvas items and of objects that belong to them. Objects of equal size are adjacent, so that
/// traversing thousands of them is cache-friendly.
///
/// Freed memory is kept for new items. Not thread-safe. Never null; exists until the process ends.
std::pmr::memory_resource* itemMemory();

/// Base class for objects that are allocated in the item memory.
class InItemMemory {
public:
    static void* operator new(std::size_t size) { return itemMemory()->allocate(size); }
    static void operator delete(void* object, std::size_t size) { itemMemory()->deallocate(object, size); }

protected:
    InItemMemory() = default;
    ~InItemMemory() = default;
};
