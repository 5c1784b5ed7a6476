#ifndef Corrade_configure_h
#define Corrade_configure_h

/** @file
@brief What the library is built for
*/

#define CORRADE_TARGET_UNIX
#ifdef __APPLE__
#define CORRADE_TARGET_APPLE
#endif
#define CORRADE_BUILD_MULTITHREADED
#define CORRADE_BUILD_DEPRECATED

#endif
