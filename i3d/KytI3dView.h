#pragma once

#include "canvas/qcanvas.h"

#include <QList>
#include <QPointer>

#include <GL/gl.h>
#include <GL/glu.h>
#include <SDL.h>

class KytAtom;
class KytMolecule;

/// The 3D viewer: a window of its own that shows the canvas as balls and sticks and flies a camera from the keyboard.
///
/// Scene units are canvas pixels; scene x is depth, y is canvas x - 1000 and z is 1000 - canvas y.
class KytI3dView {
public:
    /// `canvas` is not owned; a canvas that has gone counts as empty.
    explicit KytI3dView(QCanvas* canvas);
    ~KytI3dView();

    /// Opens the window and returns when the user closes it, or at once, after a line on standard output, when there
    /// can be no window.
    void view();

    /// The index of `atom` in atomsArr; 0 when it is not there.
    int getIndex(KytAtom* atom) const;

    void init();
    void CreateLists();
    void RenderMolecule(KytMolecule* molecule);
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
};
