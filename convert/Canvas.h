#pragma once

#include "doc/kytstudiodoc.h"

/// A document with a canvas of its own, which goes with it.
class Canvas {
public:
    Canvas() { doc.newDoc(); }
    ~Canvas() { delete doc.canvas; }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    KytStudioDoc doc;
};
