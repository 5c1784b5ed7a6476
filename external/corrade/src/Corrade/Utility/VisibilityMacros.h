#ifndef Corrade_Utility_VisibilityMacros_h
#define Corrade_Utility_VisibilityMacros_h

/** @file
@brief Symbol visibility
*/

#define CORRADE_VISIBILITY_EXPORT __attribute__((visibility("default")))
#define CORRADE_VISIBILITY_IMPORT __attribute__((visibility("default")))
#define CORRADE_VISIBILITY_LOCAL __attribute__((visibility("hidden")))
#define CORRADE_VISIBILITY_STATIC

/* The library's own marker. Classes carry it so that a module compiled with
   hidden visibility refers to their one definition. */
#define CORRADE_UTILITY_EXPORT CORRADE_VISIBILITY_EXPORT

#endif
