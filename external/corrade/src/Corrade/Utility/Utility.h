#ifndef Corrade_Utility_Utility_h
#define Corrade_Utility_Utility_h

/** @file
@brief Forward declarations for @ref Corrade::Utility
*/

namespace Corrade { namespace Utility {

class Debug;
class Warning;
class Error;

}}

#endif
