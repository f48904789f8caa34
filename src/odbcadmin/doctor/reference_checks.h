// Keys whose value lies elsewhere, and keys that a driver never asks for.
#pragma once

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/doctor/loader_places.h"
#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

// What the names and values of a data source's keys show by themselves: nothing is opened but the files that know the
// driver.
Findings checkKeys(const model::DataSource& source, const model::Configuration& configuration);

// Whether its references work: libodbcinst.so.2 is asked for each, with this process's rights and environment, and the
// loader's search says whether the driver would get this library.
Findings checkReferences(const model::DataSource& source, const model::Configuration& configuration,
                         const LoaderPlaces& places);

}  // namespace jx::doctor
