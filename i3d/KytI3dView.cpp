#include "i3d/KytI3dView.h"

#include "canvas/truncate.h"
#include "doc/TerminationSignals.h"
#include "i3d/SceneGeometry.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

constexpr int windowWidth = 1285;
constexpr int windowHeight = 1029;
constexpr int bitsPerPixel = 32;
constexpr int viewportWidth = 1280;
constexpr int viewportHeight = 1024;
constexpr double fieldOfView = 100; // degrees, from bottom to top
constexpr double nearestDepth = 0.1;
constexpr double farthestDepth = 6000;
constexpr float shininess = 128;

constexpr int startDistance = 200; // scene units between the frontmost atom and the camera
constexpr double degreesPerKeyAboutZ = 0.5;
constexpr double degreesPerKeyAboutY = 0.3;
constexpr double spinAboutZ = 0.05; // degrees per millisecond
constexpr double spinAboutY = 0.03;
constexpr Uint32 toggleKeyPause = 299; // milliseconds

/// Has frame buffers and the like mapped one by one. They come and go with every window, and would leave holes in the
/// heap that it grows by.
void keepLargeBlocksOffTheHeap()
{
#ifdef __GLIBC__
    constexpr int largeBlock = 128 * 1024; // bytes
    mallopt(M_MMAP_THRESHOLD, largeBlock);
#endif
}

void moveBy(int& coordinate, int step)
{
    coordinate = saturatedSum(coordinate, step);
}

/// The milliseconds from `stamp` until `now`. A stamp ahead of the clock comes from before the clock was set back to 0.
Uint32 millisecondsSince(Uint32 stamp, Uint32 now)
{
    return stamp > now ? now : now - stamp;
}

/// Whether a key that switches something may act now. The keys that share this timer act at most once in a while,
/// however long they are held.
bool mayToggle()
{
    static Uint32 keyTimer = 0;
    if (millisecondsSince(keyTimer, SDL_GetTicks()) <= toggleKeyPause)
        return false;
    keyTimer = SDL_GetTicks();
    return true;
}

} // namespace

KytI3dView::KytI3dView(QCanvas* canvas)
    : canvas(canvas)
    , nFlags(static_cast<int>(SDL_HWSURFACE | SDL_OPENGL | SDL_ASYNCBLIT | SDL_HWPALETTE))
{
}

KytI3dView::~KytI3dView() = default;

void KytI3dView::view()
{
    const TerminationSignals terminationSignals;
    if (!open())
        return;
    bool done = false;
    while (!done && !terminationSignals.arrived())
        done = step();
    close();
}

int KytI3dView::getIndex(KytAtom* atom) const
{
    const qsizetype index = atomsArr.first(std::clamp<qsizetype>(atomsCount, 0, atomsArr.size())).indexOf(atom);
    return static_cast<int>(std::max<qsizetype>(0, index));
}

bool KytI3dView::open()
{
    if (!startVideo() || !openWindow()) {
        SDL_Quit();
        pSDLVideoInfo = nullptr;
        return false;
    }
    event = {};
    init();
    return true;
}

bool KytI3dView::startVideo()
{
    keepLargeBlocksOffTheHeap();
    setenv("SDL_VIDEODRIVER", "x11", 0); // SDL must never fall back to drawing in a terminal
    SDL_Init(SDL_INIT_VIDEO | SDL_INIT_NOPARACHUTE);
    SDL_EventState(SDL_MOUSEMOTION, SDL_IGNORE); // one event is handled a frame: motion would hold up the keys
    SDL_WM_SetCaption("MOLECULAR I3D VIEWER", nullptr);
    pSDLVideoInfo = SDL_GetVideoInfo();
    if (!pSDLVideoInfo)
        std::cout << "SDL_GetVideoInfo() failed. SDL Error: " << SDL_GetError() << std::endl;
    return pSDLVideoInfo;
}

bool KytI3dView::openWindow()
{
    if (pSDLVideoInfo->hw_available)
        nFlags |= SDL_HWSURFACE;
    if (pSDLVideoInfo->blit_hw)
        nFlags |= SDL_HWACCEL;
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    pSDLSurface = SDL_SetVideoMode(windowWidth, windowHeight, bitsPerPixel, static_cast<Uint32>(nFlags));
    if (!pSDLSurface)
        std::cout << "Call to SDL_SetVideoMode() failed! - SDL_Error: " << SDL_GetError() << std::endl;
    return pSDLSurface;
}

bool KytI3dView::step()
{
    SDL_Event newer;
    if (SDL_PollEvent(&newer))
        event = newer;
    // Without a newer event the latest one is handled again: a key acts in every frame until it is released.
    bool done = false;
    if (event.type == SDL_KEYDOWN)
        done = HandleKeyboard(&event.key.keysym);
    else if (event.type == SDL_QUIT)
        done = true;
    renderScene();
    return done;
}

void KytI3dView::close()
{
    freeQuadric();
    SDL_Quit();
    pSDLSurface = nullptr;
    pSDLVideoInfo = nullptr;
}

void KytI3dView::init()
{
    setUpProjection();
    setUpLight();
    makeQuadric();
    totalAtomCount = 0;
    std::fill_n(pos, 3, 0);
    defaulteye = pos[0];
    CreateLists();
    putCameraInFront();
}

void KytI3dView::setUpProjection()
{
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(fieldOfView, static_cast<double>(viewportWidth) / viewportHeight, nearestDepth, farthestDepth);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glViewport(0, 0, viewportWidth, viewportHeight);
    glShadeModel(GL_SMOOTH);
    glClearColor(0, 0, 0, 1);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glBlendFunc(GL_SRC_ALPHA, GL_DST_ALPHA);
    glEnable(GL_TEXTURE_2D);
    glClearDepth(1.0);
    glDepthFunc(GL_LESS);
    glEnable(GL_DEPTH_TEST);
}

void KytI3dView::setUpLight()
{
    glLightfv(GL_LIGHT0, GL_AMBIENT, ambience);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, diffuse);
    glLightfv(GL_LIGHT0, GL_SPECULAR, specular);
    glLightfv(GL_LIGHT0, GL_POSITION, position);
    glEnable(GL_LIGHT0);
    glEnable(GL_LIGHTING);
    glEnable(GL_COLOR_MATERIAL);
}

void KytI3dView::makeQuadric()
{
    freeQuadric();
    quadratic = gluNewQuadric();
    gluQuadricNormals(quadratic, GLU_SMOOTH);
    gluQuadricTexture(quadratic, GL_TRUE);
}

void KytI3dView::freeQuadric()
{
    if (quadratic)
        gluDeleteQuadric(quadratic);
    quadratic = nullptr;
}

/// Turns the sums in `pos` into the centroid, which is the scene's origin when there is no atom, and looks at it from
/// in front of the frontmost atom.
void KytI3dView::putCameraInFront()
{
    for (int i = 0; i < 3; ++i) {
        if (totalAtomCount > 0)
            pos[i] = truncated(static_cast<float>(pos[i]) / static_cast<float>(totalAtomCount));
        defaultPos[i] = pos[i];
    }
    moveBy(defaulteye, startDistance);
    resetCamera();
}

void KytI3dView::resetCamera()
{
    std::copy_n(defaultPos, 3, pos);
    eye[0] = defaulteye;
    eye[1] = defaultPos[1];
    eye[2] = defaultPos[2];
}

void KytI3dView::renderScene()
{
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    placeCamera();
    glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE);
    glMaterialfv(GL_FRONT, GL_SPECULAR, specular);
    glMaterialf(GL_FRONT, GL_SHININESS, shininess);
    turnScene();
    glCallList(1);
    if (rotation[0] || rotation[1]) {
        // Stands still while nothing spins: the first frame after a pause makes up for the whole of it.
        static Uint32 sceneTimer = 0;
        spin(millisecondsSince(sceneTimer, SDL_GetTicks()));
        sceneTimer = SDL_GetTicks();
    }
    SDL_GL_SwapBuffers();
    glFlush();
}

void KytI3dView::placeCamera() const
{
    gluLookAt(eye[0], eye[1], eye[2], pos[0], pos[1], pos[2], 0, 0, 1);
}

/// Turns the scene about the point looked at or, while it spins by itself, about the centroid.
void KytI3dView::turnScene() const
{
    const int* centre = rotation[0] || rotation[1] ? defaultPos : pos;
    const auto x = static_cast<float>(centre[0]);
    const auto y = static_cast<float>(centre[1]);
    const auto z = static_cast<float>(centre[2]);
    glTranslatef(x, y, z);
    glRotatef(rotYAngle, 0, 0, 1);
    glRotatef(rotXAngle, 0, 1, 0);
    glTranslatef(-x, -y, -z);
}

void KytI3dView::spin(Uint32 milliseconds)
{
    if (rotation[0])
        rotYAngle += milliseconds * spinAboutZ;
    if (rotation[1])
        rotXAngle += milliseconds * spinAboutY;
}

bool KytI3dView::HandleKeyboard(SDL_keysym* key)
{
    switch (key->sym) {
    case SDLK_ESCAPE:
        return true;
    case SDLK_UP:
        moveBy(eye[2], 1);
        moveBy(pos[2], 1);
        break;
    case SDLK_DOWN:
        moveBy(eye[2], -1);
        moveBy(pos[2], -1);
        break;
    case SDLK_LEFT:
        moveBy(eye[1], -1);
        moveBy(pos[1], -1);
        break;
    case SDLK_RIGHT:
        moveBy(eye[1], 1);
        moveBy(pos[1], 1);
        break;
    case SDLK_a:
        moveBy(pos[1], -1);
        break;
    case SDLK_d:
        moveBy(pos[1], 1);
        break;
    case SDLK_w:
        moveBy(eye[0], -1);
        break;
    case SDLK_s:
        moveBy(eye[0], 1);
        break;
    case SDLK_x:
        rotYAngle += degreesPerKeyAboutZ;
        break;
    case SDLK_z:
        rotYAngle -= degreesPerKeyAboutZ;
        break;
    case SDLK_e:
        rotXAngle += degreesPerKeyAboutY;
        break;
    case SDLK_q:
        rotXAngle -= degreesPerKeyAboutY;
        break;
    case SDLK_r:
        if (mayToggle())
            rotation[0] = !rotation[0];
        break;
    case SDLK_t:
        if (mayToggle())
            rotation[1] = !rotation[1];
        break;
    case SDLK_f:
        if (mayToggle())
            SDL_WM_ToggleFullScreen(pSDLSurface);
        break;
    case SDLK_o:
        resetCamera();
        rotYAngle = 0;
        rotXAngle = 0;
        break;
    case SDLK_RSHIFT:
    case SDLK_LSHIFT:
        spclkeys = true;
        break;
    default:
        break;
    }
    return false;
}
