#ifndef Quillmere_editor_JournalFormat_h
#define Quillmere_editor_JournalFormat_h

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <rapidjson/document.h>

#include "editor/FileIdentity.h"

namespace QuillmereEngine {

/** @file
@brief The bytes of a journal

Eight bytes that say what it is, the version of the format (32 bits), and then records: a checksum
(64 bits), the size of the payload (32 bits) and the payload, whose first byte is the record's kind.
The checksum is XXH3 of size and payload with the checksum of the record before as its seed, so that
also a record that's missing or from elsewhere ends the journal. Numbers have the lowest byte first.

The first record names the file that the journal continues, each other one is a change that was
written into the document or the announcement of a save.
*/

/** @brief Where a chain of records stands */
struct JournalChain {
    /** Of the newest record */
    std::uint64_t checksum = 0;
};

/**
@brief Append the beginning of a journal
@param base What it continues, nothing for a new project without a file
*/
void appendJournalBegin(
    std::string& out, JournalChain& chain, const std::optional<FileIdentity>& base);

/** @brief Append a change, see @ref ChangeObserver::changeWritten() for the arguments. Expects less than 4 GB. */
void appendJournalChange(std::string& out, JournalChain& chain, std::string_view path,
    const rapidjson::Value* oldValue, const rapidjson::Value* newValue);

/**
@brief Append that a file is about to be written
@param file     Absolute path
@param content  What it's about to hold. If it does, the changes so far are in it.
*/
void appendJournalSave(
    std::string& out, JournalChain& chain, std::string_view file, const FileIdentity& content);

/** @brief A record as it was read */
struct JournalRecord {
    enum class Kind { Change, Save };

    Kind kind = Kind::Change;
    /** JSON pointer of a change or file of a save. A part of the journal's bytes. */
    std::string_view path;
    bool hasOldValue = false;
    /** Null if nothing stands there after the change. Belongs to the reader until the next record. */
    const rapidjson::Value* newValue = nullptr;
    FileIdentity content;
};

/** @brief What the bytes of a journal are */
enum class JournalState {
    Whole,        /**< There's at least its first record */
    Unbegun,      /**< The editor ended while it began to write. There are no changes. */
    OtherVersion, /**< Of another version of this format */
    Unreadable    /**< Something else, or damaged in its first record */
};

/** @brief Reads the records of a journal up to the first one that isn't whole. Harmed by no bytes. */
class JournalReader {
public:
    /** @param bytes    The whole file. Has to live as long. */
    explicit JournalReader(std::string_view bytes);

    JournalState state() const { return _state; }

    /** @brief Of the format, if it's another one */
    std::uint32_t version() const { return _version; }

    const std::optional<FileIdentity>& base() const { return _base; }

    /** @brief The next record, null at the end. Valid until the next call. */
    const JournalRecord* next();

    /** @brief Size of all records that were read */
    std::size_t offset() const { return _offset; }

    /** @brief Where the chain stands after these */
    JournalChain chain() const { return _chain; }

private:
    void readBegin();
    bool takePayload(std::string_view& payload);
    bool readChange(std::string_view payload);
    bool readSave(std::string_view payload);

    std::string_view _bytes;
    JournalState _state = JournalState::Unreadable;
    std::uint32_t _version = 0;
    std::optional<FileIdentity> _base;
    std::size_t _offset = 0;
    JournalChain _chain;
    JournalRecord _record;
    rapidjson::Document _value;
};

}

#endif
