#pragma once

#include "canvas/qcanvas.h"
#include "i3d/Scene.h"

#include <QList>
#include <QPointer>

#include <array>
#include <optional>

#include <GL/gl.h>
#include <GL/glu.h>
#include <SDL.h>

class KytAtom;
class KytBond;
class KytBondLine;
class KytMolecule;

/// The 3D viewer: a separate window that shows the drawing as balls and sticks, with a camera controlled by keys.
///
/// Scene units are canvas pixels; scene x is depth, y is canvas x - 1000 and z is 1000 - canvas y.
class KytI3dView {
public:
    /// `canvas` is not owned; a canvas that was destroyed counts as empty.
    explicit KytI3dView(QCanvas* canvas);
    ~KytI3dView();

    /// Opens the window and returns when the user closes it. If the window cannot be opened, prints a line on standard
    /// output and returns at once. A termination signal closes the window and then takes its usual effect; a
    /// message of the session manager, such as the one that the session ends, closes it for Qt to read the message.
    void view();

    /// The steps of view(), for callers with their own loop. If the window cannot be opened, `open` prints a line on
    /// standard output and returns false. After that, and after `close`, only `open` may be called.
    bool open();
    /// Handles the next event, or the last one again if there is none. Draws a frame if the picture has changed and no
    /// further event is waiting, or if it has been waiting for a frame for 100 ms. With nothing to do, rests for at
    /// most 10 ms. Returns true if the user has closed the viewer.
    bool step();
    void close();

    /// The index of `atom` in atomsArr; 0 if it is not in the list.
    int getIndex(KytAtom* atom) const;

    /// Sets up OpenGL for the open window, compiles the scene and positions the camera in front of it.
    void init();
    /// Makes the scene of the current drawing, compiles its shapes into display lists, and accumulates `pos`,
    /// `totalAtomCount` and `defaulteye`.
    void CreateLists();
    /// Adds one molecule to the scene and its atoms to the sums, as CreateLists does for all.
    void RenderMolecule(KytMolecule* molecule);
    /// Renders and shows a frame, whether the picture has changed or not.
    void renderScene();
    /// Handles a key press; returns true if it closes the viewer.
    bool HandleKeyboard(SDL_keysym* key);

    int pastTime = 0;
    bool spclkeys = false;
    bool rotation[2] = {false, false}; ///< automatic spin of rotYAngle and of rotXAngle
    int bondsCount = 0;
    int atomsCount = 0;
    int totalAtomCount = 0;
    QList<KytAtom*> atomsArr; ///< the atoms of the molecule being drawn
    GLUquadricObj* quadratic = nullptr;
    int eye[3] = {150, 0, 0};
    int pos[3] = {0, 0, 0};
    int defaultPos[3] = {0, 0, 0};
    int defaulteye = 0;
    float rho = 20.0F;
    float rotYAngle = 0; ///< degrees about the scene's z axis
    float rotXAngle = 0; ///< degrees about the scene's y axis
    GLfloat ambience[4] = {0.1F, 0.1F, 0.1F, 0.1F};
    GLfloat diffuse[4] = {1, 1, 1, 1};
    GLfloat specular[4] = {1, 1, 1, 1};
    GLfloat position[4] = {0, 0, 1, 0};
    QPointer<QCanvas> canvas;
    int nFlags;
    const SDL_VideoInfo* pSDLVideoInfo = nullptr;
    SDL_Surface* pSDLSurface = nullptr;

private:
    /// All that a frame shows of the compiled scene.
    struct Viewpoint {
        std::array<int, 3> eye;
        std::array<int, 3> target;
        std::array<int, 3> rotationCentre;
        float rotYAngle;
        float rotXAngle;
        bool operator==(const Viewpoint&) const = default;
    };

    Scene scene;
    SDL_Event event = {};                    // the last event; initially none
    std::optional<Viewpoint> shownViewpoint; // none if the window does not show a frame, or not all of it
    Uint32 lastFrameTime = 0;                // SDL's clock at the end of the last frame

    bool startVideo();
    bool openWindow();
    void setUpProjection();
    void setUpLight();
    void makeQuadric();
    void freeQuadric();
    void putCameraInFront();
    void resetCamera();
    void placeCamera() const;
    const int* rotationCentre() const;
    void rotateScene() const;
    void toggleFullScreen();

    void takeNextEvent();
    bool handleLastEvent();
    Viewpoint viewpoint() const;
    bool needsFrame() const;
    bool frameIsOverdue() const;
    bool spins() const { return rotation[0] || rotation[1]; }
    void spinByTheClock();
    void rest() const;

    void addMolecule(const QList<KytAtom*>& atoms);
    void addAtom(const KytAtom* atom);
    void addToSums(const KytAtom* atom);
    void addBond(const KytBond* bond);
    void addWedge(const KytBond* bond);
    void addLine(const KytBond* bond, const KytBondLine* line);
    void addStick(const SceneStick& stick, bool isUpWedge, const KytBond* bond);
};
