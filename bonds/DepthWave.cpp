#include "bonds/DepthWave.h"

#include "bonds/GatheredLayout.h"
#include "bonds/KytBond.h"
#include "model/KytAtom.h"

#include <cmath>
#include <vector>

namespace {

/// One wave of depth on its way. It takes the outgoing bonds of an atom from the last to the first and follows each to
/// the end before it takes the next, so the first time it comes to an atom it comes along the path that decides.
class Wave {
public:
    void enter(KytAtom* atom)
    {
        atom->visit = number;
        passing.push_back({atom, atom->outList.size()});
    }

    void passAlong(const KytBond* bond)
    {
        KytAtom* end = bond->getToAtom();
        const float depth = bond->endDepth();
        if (std::isnan(depth) || end->visit == number)
            return;
        end->visit = number;
        if (end->atomZ == depth)
            return;
        end->atomZ = depth;
        enter(end);
    }

    void run()
    {
        while (!passing.empty()) {
            Passing& last = passing.back();
            if (last.bondsLeft == 0) {
                passing.pop_back();
                continue;
            }
            KytBond* bond = last.atom->outList[--last.bondsLeft];
            ++passed;
            if (bond->layOut())
                passAlong(bond);
        }
        if (GatheredLayout* gathered = GatheredLayout::current())
            gathered->count(passed);
    }

    const quint64 number = KytAtom::newVisit();

private:
    struct Passing {
        KytAtom* atom;
        qsizetype bondsLeft;
    };
    std::vector<Passing> passing;
    qint64 passed = 0;
};

} // namespace

void sendDepth(KytAtom* source)
{
    Wave wave;
    wave.enter(source);
    wave.run();
}

void sendDepthAlong(KytBond* bond)
{
    const float depth = bond->endDepth();
    if (std::isnan(depth) || depth == bond->getToAtom()->atomZ)
        return;
    Wave wave;
    bond->getFromAtom()->visit = wave.number;
    wave.passAlong(bond);
    wave.run();
}

void sendDepthBeyond(const std::vector<KytAtom*>& settled, const std::vector<KytAtom*>& changed)
{
    Wave wave;
    for (KytAtom* atom : settled)
        atom->visit = wave.number;
    for (KytAtom* atom : changed)
        wave.enter(atom);
    wave.run();
}
