#ifndef Quillmere_editor_Test_randomInput_h
#define Quillmere_editor_Test_randomInput_h

#include <cstdint>
#include <string>

#include "editor/Layout.h"

namespace QuillmereEngine {

/**
@brief A replay file of a user who does anything
@param seed     The same seed gives the same text on every machine
@param frames   How long the user goes on. What is held down then is let go of.
@param area     Where the mouse goes

Moves, clicks of all buttons, double clicks, drags, the wheel, keys with and without modifiers, and
texts, typed also into whatever a click has opened for that.
*/
std::string randomInput(std::uint32_t seed, unsigned long frames, WorkArea area);

}

#endif
