#include "i3d/KytI3dView.h"

#include "canvas/truncate.h"
#include "i3d/SceneGeometry.h"
#include "i3d/SdlClock.h"
#include "i3d/WindowIcon.h"

#include <QGuiApplication>
#include <QIcon>

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
constexpr double fieldOfView = 100; // degrees, vertical
constexpr double nearestDepth = 0.1;
constexpr double farthestDepth = 6000;
constexpr float shininess = 128;

constexpr int startDistance = 200; // scene units between the frontmost atom and the camera
constexpr double degreesPerKeyAboutZ = 0.5;
constexpr double degreesPerKeyAboutY = 0.3;
constexpr Uint32 toggleKeyPause = 299; // milliseconds

/// Makes malloc map large blocks, such as frame buffers, separately. They are allocated for every window and would
/// fragment the heap. What a frame frees is kept for the next one instead.
void prepareHeapForFrames()
{
#ifdef __GLIBC__
    constexpr int largeBlock = 128 * 1024;          // bytes
    constexpr int memoryOfFrame = 16 * 1024 * 1024; // of software rendering, with many atoms in view
    mallopt(M_MMAP_THRESHOLD, largeBlock);
    mallopt(M_TRIM_THRESHOLD, memoryOfFrame);
#endif
}

void moveBy(int& coordinate, int step)
{
    coordinate = saturatedSum(coordinate, step);
}

/// Whether a toggle key may act now. The toggle keys share a timer and act at most once per toggleKeyPause, however
/// long they are held.
bool mayToggle()
{
    static Uint32 keyTimer = 0;
    if (millisecondsSince(keyTimer) <= toggleKeyPause)
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
    shownViewpoint.reset();
    lastFrameTime = SDL_GetTicks();
    init();
    return true;
}

bool KytI3dView::startVideo()
{
    prepareHeapForFrames();
    setenv("SDL_VIDEODRIVER", "x11", 0); // prevents SDL's fallback to drawing in a terminal
    SDL_Init(SDL_INIT_VIDEO | SDL_INIT_NOPARACHUTE);
    // SDL queues 128 events and drops the rest. During a long frame the pointer would fill the queue, and keys be lost.
    SDL_EventState(SDL_MOUSEMOTION, SDL_IGNORE);
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
    else
        setViewerIcon(QGuiApplication::windowIcon());
    return pSDLSurface;
}

void KytI3dView::close()
{
    freeQuadric();
    scene.clear();
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
}

void KytI3dView::freeQuadric()
{
    if (quadratic)
        gluDeleteQuadric(quadratic);
    quadratic = nullptr;
}

/// Converts the sums in `pos` to the centroid (the scene's origin without atoms) and points the camera at it from in
/// front of the frontmost atom.
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
    shownViewpoint = viewpoint();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    placeCamera();
    glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE);
    glMaterialfv(GL_FRONT, GL_SPECULAR, specular);
    glMaterialf(GL_FRONT, GL_SHININESS, shininess);
    rotateScene();
    scene.draw(viewportHeight);
    spinByTheClock();
    SDL_GL_SwapBuffers();
    glFlush();
    lastFrameTime = SDL_GetTicks();
}

void KytI3dView::placeCamera() const
{
    gluLookAt(eye[0], eye[1], eye[2], pos[0], pos[1], pos[2], 0, 0, 1);
}

/// The point that the camera looks at or, while the scene spins, the centroid.
const int* KytI3dView::rotationCentre() const
{
    return spins() ? defaultPos : pos;
}

void KytI3dView::rotateScene() const
{
    const int* centre = rotationCentre();
    const auto x = static_cast<float>(centre[0]);
    const auto y = static_cast<float>(centre[1]);
    const auto z = static_cast<float>(centre[2]);
    glTranslatef(x, y, z);
    glRotatef(rotYAngle, 0, 0, 1);
    glRotatef(rotXAngle, 0, 1, 0);
    glTranslatef(-x, -y, -z);
}

void KytI3dView::toggleFullScreen()
{
    SDL_WM_ToggleFullScreen(pSDLSurface);
    shownViewpoint.reset();
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
            toggleFullScreen();
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
