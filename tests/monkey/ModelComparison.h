#pragma once

#include "tests/monkey/EditorModel.h"

#include <QString>

class KytBond;
class KytStudioView;

/// In what an editor and its model differ, or nothing. Numbers are compared bit by bit.
QString difference(const EditorModel& model, const KytStudioView& view);

/// The number in the model of a bond in the editor; both must be alike.
int numberOf(const KytBond* bond, const EditorModel& model);
