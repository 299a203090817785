#include "tests/monkey/ModelComparison.h"

#include "bonds/KytBond.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "tests/support/Drawing.h"
#include "view/kytstudioview.h"

#include <bit>
#include <iterator>

namespace {

bool same(double one, double other)
{
    return std::bit_cast<quint64>(one) == std::bit_cast<quint64>(other);
}

bool same(float one, float other)
{
    return std::bit_cast<quint32>(one) == std::bit_cast<quint32>(other);
}

class Comparison {
public:
    Comparison(const EditorModel& model, const KytStudioView& view)
        : model(model)
        , view(view)
        , atoms(drawnAtoms(*view.canvas()))
    {
        for (const auto& [number, ignored] : model.drawing.atoms)
            numbers.append(number);
    }

    QString first()
    {
        if (atoms.size() != numbers.size())
            return say("the number of atoms", double(atoms.size()), double(numbers.size()));
        for (qsizetype i = 0; i < atoms.size() && fault.isEmpty(); ++i)
            compareAtom(i);
        for (qsizetype i = 0; i < atoms.size() && fault.isEmpty(); ++i)
            compareBonds(i);
        if (fault.isEmpty())
            compareItems();
        if (fault.isEmpty())
            compareMolecules();
        if (fault.isEmpty())
            compareGesture();
        return fault;
    }

private:
    QString say(const QString& what, double inEditor, double inModel)
    {
        fault = QStringLiteral("%1: %2 in the editor, %3 in the model")
                    .arg(what)
                    .arg(inEditor, 0, 'g', 17)
                    .arg(inModel, 0, 'g', 17);
        return fault;
    }

    template <typename Number> void compare(const QString& what, Number inEditor, Number inModel)
    {
        if (fault.isEmpty() && !same(inEditor, inModel))
            say(what, inEditor, inModel);
    }
    void compare(const QString& what, qint64 inEditor, qint64 inModel)
    {
        if (fault.isEmpty() && inEditor != inModel)
            say(what, double(inEditor), double(inModel));
    }

    void compareAtom(qsizetype i)
    {
        const KytAtom* atom = atoms[i];
        const AtomModel& expected = model.drawing.atoms.at(numbers[i]);
        const QString name = QStringLiteral(" of atom %1").arg(numbers[i]);
        compare("x" + name, atom->x(), expected.x);
        compare("y" + name, atom->y(), expected.y);
        compare("depth" + name, atom->atomZ, expected.z);
        compare("label's x" + name, atom->canvasSymbol->x(), expected.labelX);
        compare("label's y" + name, atom->canvasSymbol->y(), expected.labelY);
        compare("lock" + name, qint64(atom->locked), qint64(expected.locked));
        compare("incoming bonds" + name, qint64(atom->inList.size()), qint64(expected.in.size()));
        compare("outgoing bonds" + name, qint64(atom->outList.size()), qint64(expected.out.size()));
    }

    /// The outgoing bonds of an atom, and where in the lists of their ends they are.
    void compareBonds(qsizetype i)
    {
        const AtomModel& atom = model.drawing.atoms.at(numbers[i]);
        for (std::size_t k = 0; k < atom.out.size() && fault.isEmpty(); ++k) {
            const int number = atom.out[k];
            const KytBond* bond = atoms[i]->outList[qsizetype(k)];
            const BondModel& expected = model.drawing.bonds.at(number);
            const std::vector<int>& in = model.drawing.atoms.at(expected.to).in;
            const QString name = QStringLiteral(" of bond %1").arg(number);
            compare("end atom" + name, qint64(numberOfAtom(bond->toAtom)), qint64(expected.to));
            compare("index at the end" + name, qint64(bond->toAtom->inList.indexOf(bond)),
                    qint64(std::find(in.begin(), in.end(), number) - in.begin()));
            compareBond(name, bond, expected);
        }
    }

    void compareBond(const QString& name, const KytBond* bond, const BondModel& expected)
    {
        compare("length" + name, bond->bondlength, expected.length);
        compare("lines" + name, qint64(bond->bondCount), qint64(expected.drawn.size()));
        compare("first kind" + name, qint64(bond->bond1Type), qint64(expected.kinds[0]));
        compare("second kind" + name, qint64(bond->bond2Type), qint64(expected.kinds[1]));
        compare("third kind" + name, qint64(bond->bond3Type), qint64(expected.kinds[2]));
        compare("wedge" + name, qint64(bond->stereoBond != nullptr), qint64(expected.isWedge()));
        if (!fault.isEmpty())
            return;
        if (expected.isWedge()) {
            compare("angle" + name, bond->stereoBond->pangle, expected.angle);
            return;
        }
        const KytBondLine* const lines[] = {bond->bond1, bond->bond2, bond->bond3};
        for (std::size_t i = 0; i < std::size(lines); ++i) {
            const bool drawn = i < expected.drawn.size();
            compare("line" + name, qint64(lines[i] != nullptr), qint64(drawn));
            if (drawn && lines[i])
                compare("dashes" + name, qint64(lines[i]->isDashed), qint64(expected.drawn[i] == KYTBT_DashedLine));
        }
    }

    void compareItems()
    {
        qint64 bondItems = 0;
        for (const auto& [number, bond] : model.drawing.bonds)
            bondItems += qint64(bond.drawn.size());
        const QList<KytBondLine*> lines = itemsOf<KytBondLine>(view.canvas());
        const QList<KytStereoBond*> wedges = itemsOf<KytStereoBond>(view.canvas());
        compare("lines and wedges", qint64(lines.size() + wedges.size()), bondItems);
    }

    void compareMolecules()
    {
        QList<QList<KytAtom*>> expected;
        for (qsizetype i = 0; i < numbers.size(); ++i) {
            const std::vector<int> members = model.drawing.moleculeOf(numbers[i]);
            if (members.front() != numbers[i])
                continue;
            QList<KytAtom*> molecule;
            for (const int member : members)
                molecule.append(atoms[numbers.indexOf(member)]);
            expected.append(molecule);
        }
        const std::vector<DrawnMolecule> drawn = drawnMolecules(*view.canvas());
        compare("molecules", qint64(drawn.size()), qint64(expected.size()));
        for (qsizetype i = 0; i < expected.size() && fault.isEmpty(); ++i)
            if (drawn[std::size_t(i)].atoms != expected[i])
                say("atoms of molecule " + QString::number(i), double(drawn[std::size_t(i)].atoms.size()),
                    double(expected[i].size()));
    }

    void compareGesture()
    {
        compare("whether a bond is being drawn", qint64(view.isLastAtom), qint64(model.isDrawing));
        if (model.isDrawing)
            compare("start atom", qint64(numberOfAtom(view.lastAtom)), qint64(model.startAtom));
        compare("atom under the pointer", qint64(numberOfAtom(view.hover)), qint64(model.hovered));
        compare("grabbed atom", qint64(numberOfAtom(view.moving)), qint64(model.grabbed));
    }

    int numberOfAtom(const QCanvasItem* item) const
    {
        const qsizetype index = atoms.indexOf(static_cast<const KytAtom*>(item));
        return index < 0 ? -1 : numbers[index];
    }

    const EditorModel& model;
    const KytStudioView& view;
    const QList<KytAtom*> atoms;
    QList<int> numbers;
    QString fault;
};

} // namespace

QString difference(const EditorModel& model, const KytStudioView& view)
{
    return Comparison(model, view).first();
}

int numberOf(const KytBond* bond, const EditorModel& model)
{
    const qsizetype start = drawnAtoms(*bond->fromAtom->canvas()).indexOf(bond->fromAtom);
    const AtomModel& atom = std::next(model.drawing.atoms.begin(), start)->second;
    return atom.out.at(std::size_t(bond->fromAtom->outList.indexOf(bond)));
}
