#pragma once

#include <SDL.h>

/// The milliseconds of SDL's clock from `stamp` until now. A stamp later than now was taken before SDL restarted its
/// clock.
inline Uint32 millisecondsSince(Uint32 stamp)
{
    const Uint32 now = SDL_GetTicks();
    return stamp > now ? now : now - stamp;
}
