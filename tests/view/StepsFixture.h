#pragma once

#include "history/KytHistory.h"
#include "tests/support/Snapshot.h"
#include "tests/view/ViewFixture.h"

#include <memory>

/// A view with a history, and three atoms: two that are joined, and one that is not.
class StepsFixture : public ViewFixture {
public:
    StepsFixture()
        : left(atom(100, 100))
        , right(atom(160, 100))
        , lone(atom(300, 100))
    {
        bond(left, right);
        lone->setMolecule(new KytMolecule);
        history = std::make_unique<KytHistory>(doc);
        view->history = history.get();
    }
    ~StepsFixture() { view->history = nullptr; }
    StepsFixture(const StepsFixture&) = delete;
    StepsFixture& operator=(const StepsFixture&) = delete;

    void mode(KytViewState state) { view->canvasState = state; }
    QStringList drawn() const { return snapshotOf(*canvas(), tempBond); }

    KytAtom* left;
    KytAtom* right;
    KytAtom* lone;
    std::unique_ptr<KytHistory> history;
};
