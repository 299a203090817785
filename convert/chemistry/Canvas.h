#pragma once

#include "doc/kytstudiodoc.h"

/// A document and its canvas; the canvas is deleted with it.
class Canvas {
public:
    Canvas() { doc.newDoc(); }
    ~Canvas() { delete doc.canvas; }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    KytStudioDoc doc;
};
