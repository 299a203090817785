#include "convert/chemistry/StartChemistry.h"

#include <RDGeneral/RDLog.h>

#include <clocale>

void startChemistry()
{
    boost::logging::disable_logs("rdApp.*");
    std::setlocale(LC_NUMERIC, "C");
}
