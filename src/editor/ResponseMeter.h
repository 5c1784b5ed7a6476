#ifndef Quillmere_editor_ResponseMeter_h
#define Quillmere_editor_ResponseMeter_h

#include <cstdint>
#include <string>
#include <string_view>

namespace QuillmereEngine {

/** @brief Reads off an HTTP answer, as it passes, what it says and how long it is */
class ResponseMeter {
public:
    /** An answer to `HEAD` has none, whatever its head says */
    enum class Body { None, Expected };

    /** @brief The next bytes of the answer, in pieces of any size */
    void pass(std::string_view bytes);

    /** @brief Status of the answer, 0 as long as its first line isn't whole or is none */
    int status() const { return _status; }

    /** @brief Bytes behind the head */
    std::uint64_t bodySize() const { return _bodySize; }

    /** @brief Whether the head is over and, if there is to be a body, as much of it as the head says */
    bool isWhole(Body body) const;

private:
    std::string _head;
    bool _isHeadOver = false;
    int _status = 0;
    std::uint64_t _contentLength = 0;
    std::uint64_t _bodySize = 0;
};

}

#endif
