/* The version of the library. This is the only place that says it: the build, the packages, the DLL's resource and the
 * command read it from here.
 *
 * MAJOR changes when an exported name, a record or a result changes; it is the number in the name of the shared library on
 * Linux. MINOR changes when something is added, PATCH when something is put right. */
#ifndef MORVANE_VERSION_H
#define MORVANE_VERSION_H

#define MORVANE_VERSION_MAJOR 0
#define MORVANE_VERSION_MINOR 1
#define MORVANE_VERSION_PATCH 0
#define MORVANE_VERSION       "0.1.0"

#endif
