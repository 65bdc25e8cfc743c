// The names under which the automation server stands on the session bus.
// Clients, the server and its tests share them.
#pragma once

namespace AztrueBus {

// The well-known name, after the type library.
inline constexpr char kServiceName[] = "com.brightfold.AZTSERVR";
// The creator of objects and its interface.
inline constexpr char kFactoryPath[] = "/com/brightfold/AZTSERVR";
inline constexpr char kFactoryInterface[] = "com.brightfold.AZTSERVR.Factory";
// Each created object stands at this prefix followed by its number, 1, 2, ...
inline constexpr char kObjectPathPrefix[] = "/com/brightfold/AZTSERVR/cAztrue/";
// The interface of every object, after the class's default interface.
inline constexpr char kObjectInterface[] = "com.brightfold.AZTSERVR._cAztrue";
// The second interface of every object: the statistics of the fit.
inline constexpr char kStatisticsInterface[] = "com.brightfold.AZTSERVR.Statistics";

}  // namespace AztrueBus
