#pragma once

#include "canvas/qcanvas.h"

#include <QList>
#include <QPointer>

#include <GL/gl.h>
#include <GL/glu.h>
#include <SDL.h>

class KytAtom;
class KytBond;
class KytBondLine;
class KytMolecule;
struct SceneStick;

/// The 3D viewer: a window of its own that shows the canvas as balls and sticks and flies a camera from the keyboard.
///
/// Scene units are canvas pixels; scene x is depth, y is canvas x - 1000 and z is 1000 - canvas y.
class KytI3dView {
public:
    /// `canvas` is not owned; a canvas that has gone counts as empty.
    explicit KytI3dView(QCanvas* canvas);
    ~KytI3dView();

    /// Opens the window and returns when the user closes it, or at once, after a line on standard output, when there
    /// can be no window. A termination signal closes the window first and then does to the process what it always does.
    void view();

    /// The steps of view(), for a caller that runs the loop itself. `open` is false, after a line on standard output,
    /// when there can be no window; after that, and after `close`, only `open` may follow.
    bool open();
    /// Handles the latest event, once more when there is no newer one, and draws a frame. True when the user has closed
    /// the viewer.
    bool step();
    void close();

    /// The index of `atom` in atomsArr; 0 when it is not there.
    int getIndex(KytAtom* atom) const;

    /// Sets up the GL context of the open window, builds the scene and puts the camera in front of it.
    void init();
    /// Compiles the scene from the canvas as it is now, adding up `pos`, `totalAtomCount` and `defaulteye`.
    void CreateLists();
    /// Draws one molecule and counts its atoms in, as CreateLists does for all; needs the lists of CreateLists.
    void RenderMolecule(KytMolecule* molecule);
    /// Draws a frame and shows it.
    void renderScene();
    /// Acts on a key; true when it closes the viewer.
    bool HandleKeyboard(SDL_keysym* key);

    int pastTime = 0;
    bool spclkeys = false;
    bool rotation[2] = {false, false}; ///< automatic spin of rotYAngle, of rotXAngle
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
    SDL_Event event = {}; // the latest one; no event at first

    bool startVideo();
    bool openWindow();
    void setUpProjection();
    void setUpLight();
    void makeQuadric();
    void freeQuadric();
    void putCameraInFront();
    void resetCamera();
    void placeCamera() const;
    void turnScene() const;
    void spin(Uint32 milliseconds);

    void compileSphere();
    void renderAtoms(const QList<KytAtom*>& atoms);
    void renderAtom(KytAtom* atom);
    void countIn(const KytAtom* atom);
    void renderBond(const KytBond* bond);
    void renderWedge(const KytBond* bond);
    void renderLine(const KytBond* bond, const KytBondLine* line);
    void renderStick(const SceneStick& stick, int slices);
};
