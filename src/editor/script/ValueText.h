#ifndef Quillmere_editor_script_ValueText_h
#define Quillmere_editor_script_ValueText_h

#include <string>

#include <js/RootingAPI.h>
#include <js/TypeDecls.h>
#include <js/Value.h>

namespace QuillmereEngine {

/** @brief UTF-8 of a string; halves of surrogate pairs become U+FFFD. False if it's too large. */
bool toUtf8(JSContext* context, JS::HandleString string, std::string& out);

/**
@brief Texts for JavaScript's values

All functions give false when the script was stopped meanwhile, or with an exception pending. They
may run code of the script, in its proxies.
*/
class ValueText {
public:
    /** @param global   The scripts' global object, whose compartment this shares */
    explicit ValueText(JSContext* context, JS::HandleObject global);

    /** @brief Whether the engine was able to set this up */
    bool isValid() const { return bool(_functions); }

    /** @brief A value as a console shows it: objects as JSON, with names for what JSON hasn't */
    bool inspect(JS::HandleValue value, std::string& out);

    /** @brief Several values as `console.log()` prints them: with formats in the first one, if it's
        a string. @p values is an array. */
    bool format(JS::HandleValue values, std::string& out);

    /** @brief What was thrown: name and message of an error, else as @ref inspect() */
    bool thrown(JS::HandleValue value, std::string& out);

private:
    bool call(const char* function, JS::HandleValue value, JS::MutableHandleValue out);
    bool text(const char* function, JS::HandleValue value, std::string& out);

    JSContext* _context;
    JS::PersistentRootedObject _functions;
};

}

#endif
