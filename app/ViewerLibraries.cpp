// Loads SDL and GLU when the 3D window is opened for the first time. Linking SDL would load two dozen further libraries
// and take a tenth of every start, and most sessions never open the window.
//
// The program links these functions instead of the library functions of the same names. Each forwards its arguments.

#include <QByteArray>
#include <QLibrary>

#include <GL/glu.h>
#include <SDL.h>

// Last: the X headers define common words as macros.
#include <SDL_syswm.h>

namespace {

/// A library that is loaded once and never unloaded.
class LoadedLibrary {
public:
    explicit LoadedLibrary(const QString& file)
        : library(file)
        , loaded(library.load())
        , error(library.errorString().toLocal8Bit())
    {
    }

    QLibrary library;
    const bool loaded;
    QByteArray error; ///< why it could not be loaded
};

LoadedLibrary& sdl()
{
    static LoadedLibrary library(QStringLiteral("libSDL-1.2.so.0"));
    return library;
}

LoadedLibrary& glu()
{
    static LoadedLibrary library(QStringLiteral("libGLU.so.1"));
    return library;
}

template <typename Result, typename... Parameters> Result doNothing(Parameters...)
{
    return Result();
}

template <typename Result, typename... Parameters>
auto orDoNothing(QFunctionPointer function, Result (*)(Parameters...))
{
    return function ? reinterpret_cast<Result (*)(Parameters...)>(function) : doNothing<Result, Parameters...>;
}

/// The library function with this name; if it is missing, a function that does nothing and returns 0.
template <auto* Wrapper> auto* original(LoadedLibrary& library, const char* name)
{
    static auto* const function = orDoNothing(library.library.resolve(name), Wrapper);
    return function;
}

} // namespace

int SDL_Init(Uint32 flags)
{
    return original<SDL_Init>(sdl(), __func__)(flags);
}

void SDL_Quit()
{
    original<SDL_Quit>(sdl(), __func__)();
}

/// Also null without GLU, so that the viewer does not open.
const SDL_VideoInfo* SDL_GetVideoInfo()
{
    return glu().loaded ? original<SDL_GetVideoInfo>(sdl(), __func__)() : nullptr;
}

char* SDL_GetError()
{
    if (!sdl().loaded)
        return sdl().error.data();
    return glu().loaded ? original<SDL_GetError>(sdl(), __func__)() : glu().error.data();
}

Uint32 SDL_GetTicks()
{
    return original<SDL_GetTicks>(sdl(), __func__)();
}

void SDL_Delay(Uint32 ms)
{
    original<SDL_Delay>(sdl(), __func__)(ms);
}

Uint8 SDL_GetAppState()
{
    return original<SDL_GetAppState>(sdl(), __func__)();
}

Uint8 SDL_EventState(Uint8 type, int state)
{
    return original<SDL_EventState>(sdl(), __func__)(type, state);
}

int SDL_PollEvent(SDL_Event* event)
{
    return original<SDL_PollEvent>(sdl(), __func__)(event);
}

int SDL_GetWMInfo(SDL_SysWMinfo* info)
{
    return original<SDL_GetWMInfo>(sdl(), __func__)(info);
}

void SDL_WM_SetCaption(const char* title, const char* icon)
{
    original<SDL_WM_SetCaption>(sdl(), __func__)(title, icon);
}

int SDL_WM_ToggleFullScreen(SDL_Surface* surface)
{
    return original<SDL_WM_ToggleFullScreen>(sdl(), __func__)(surface);
}

SDL_Surface* SDL_SetVideoMode(int width, int height, int bpp, Uint32 flags)
{
    return original<SDL_SetVideoMode>(sdl(), __func__)(width, height, bpp, flags);
}

int SDL_GL_SetAttribute(SDL_GLattr attribute, int value)
{
    return original<SDL_GL_SetAttribute>(sdl(), __func__)(attribute, value);
}

void SDL_GL_SwapBuffers()
{
    original<SDL_GL_SwapBuffers>(sdl(), __func__)();
}

void gluPerspective(GLdouble fieldOfView, GLdouble aspect, GLdouble nearest, GLdouble farthest)
{
    original<gluPerspective>(glu(), __func__)(fieldOfView, aspect, nearest, farthest);
}

void gluLookAt(GLdouble eyeX, GLdouble eyeY, GLdouble eyeZ, GLdouble centreX, GLdouble centreY, GLdouble centreZ,
               GLdouble upX, GLdouble upY, GLdouble upZ)
{
    original<gluLookAt>(glu(), __func__)(eyeX, eyeY, eyeZ, centreX, centreY, centreZ, upX, upY, upZ);
}

GLUquadric* gluNewQuadric()
{
    return original<gluNewQuadric>(glu(), __func__)();
}

void gluDeleteQuadric(GLUquadric* quadric)
{
    original<gluDeleteQuadric>(glu(), __func__)(quadric);
}

void gluQuadricNormals(GLUquadric* quadric, GLenum normals)
{
    original<gluQuadricNormals>(glu(), __func__)(quadric, normals);
}

void gluSphere(GLUquadric* quadric, GLdouble radius, GLint slices, GLint stacks)
{
    original<gluSphere>(glu(), __func__)(quadric, radius, slices, stacks);
}
