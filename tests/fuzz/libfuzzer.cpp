// What libFuzzer calls.

#include "model/KytMolecule.h"
#include "tests/fuzz/FuzzTarget.h"

#include <sanitizer/allocator_interface.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

// An atom's first molecule is freed by nobody. Over millions of inputs these would fill the memory and hide what else
// leaks, so they are found among the blocks that an input has allocated, and freed after it.
namespace {

constexpr std::size_t mostBlocks = 1 << 20; // beyond so many, they are left alone
const void* blocks[mostBlocks];             // of a molecule's size, allocated since the last input
std::size_t blockCount = 0;

void remember(const volatile void* block, std::size_t size)
{
    if (size == sizeof(KytMolecule) && blockCount < mostBlocks)
        blocks[blockCount++] = const_cast<const void*>(block);
}

void forget(const volatile void*) { }

/// Whether a block of a molecule's size, whatever it is, holds a molecule that an atom has left without having been its
/// member: a molecule that was lost in any other state is a leak. Follows no pointer; an empty list points to itself.
bool isFirstMolecule(const void* block)
{
    const auto* molecule = static_cast<const KytMolecule*>(block);
    return molecule->atoms.isEmpty() && molecule->atomsCount < 0 && molecule->moleculeNum == 0
        && molecule->moleculeName.isNull() && molecule->authorName.isNull();
}

/// To be called while no atom is left.
void freeFirstMolecules()
{
    std::sort(blocks, blocks + blockCount);
    auto* const end = std::unique(blocks, blocks + blockCount);
    for (auto* block = blocks; block != end; ++block)
        if (__sanitizer_get_ownership(*block) && __sanitizer_get_allocated_size(*block) == sizeof(KytMolecule)
            && isFirstMolecule(*block))
            delete static_cast<const KytMolecule*>(*block);
    blockCount = 0;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    startApplication();
    __sanitizer_install_malloc_and_free_hooks(remember, forget);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    runInput(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    freeFirstMolecules();
    return 0;
}
