#include "editor/JournalFormat.h"

#include <algorithm>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "editor/journalBytes.h"

namespace QuillmereEngine {

namespace {

constexpr std::string_view Magic{"QJOURNAL"};
constexpr std::uint32_t Version = 1;
constexpr std::size_t HeadSize = Magic.size() + sizeof(Version);
/* Checksum and size of a record */
constexpr std::size_t FrameSize = 12;
/* Kind, whether there's a file, and its identity */
constexpr std::size_t BeginSize = 2 + 24;

constexpr char BeginKind = 'B';
constexpr char ChangeKind = 'C';
constexpr char SaveKind = 'S';

constexpr char HasOldValue = 1;
constexpr char HasNewValue = 2;

std::uint64_t checksumOf(const std::string_view sizeAndPayload, const JournalChain chain) {
    return XXH3_64bits_withSeed(sizeAndPayload.data(), sizeAndPayload.size(), chain.checksum);
}

/* Writes the payload in place, and checksum and size in front of it once it's there: most records
   are small, and a buffer for each would take as long as the rest */
template<class Payload>
void appendRecord(std::string& out, JournalChain& chain, const Payload& payload) {
    const std::size_t begin = out.size();
    out.append(FrameSize, '\0');
    payload();
    std::string frame;
    appendNumber(frame, std::uint32_t(out.size() - begin - FrameSize));
    out.replace(begin + 8, frame.size(), frame);
    chain.checksum = checksumOf(std::string_view{out}.substr(begin + 8), chain);
    frame.clear();
    appendNumber(frame, chain.checksum);
    out.replace(begin, frame.size(), frame);
}

void appendIdentity(std::string& out, const FileIdentity& file) {
    appendNumber(out, file.size);
    appendNumber(out, file.hash[0]);
    appendNumber(out, file.hash[1]);
}

bool takeIdentity(std::string_view& in, FileIdentity& file) {
    return takeNumber(in, file.size) && takeNumber(in, file.hash[0]) &&
        takeNumber(in, file.hash[1]);
}

}

void appendJournalBegin(
    std::string& out, JournalChain& chain, const std::optional<FileIdentity>& base) {
    out += Magic;
    appendNumber(out, Version);
    chain = {};
    appendRecord(out, chain, [&] {
        out += BeginKind;
        out += char(base.has_value());
        appendIdentity(out, base.value_or(FileIdentity{}));
    });
}

void appendJournalChange(std::string& out, JournalChain& chain, const std::string_view path,
    const rapidjson::Value* const oldValue, const rapidjson::Value* const newValue) {
    appendRecord(out, chain, [&] {
        out += ChangeKind;
        out += char((oldValue ? HasOldValue : 0) | (newValue ? HasNewValue : 0));
        appendText(out, path);
        if(newValue)
            appendValue(out, *newValue);
    });
}

void appendJournalSave(std::string& out, JournalChain& chain, const std::string_view file,
    const FileIdentity& content) {
    appendRecord(out, chain, [&] {
        out += SaveKind;
        appendText(out, file);
        appendIdentity(out, content);
    });
}

JournalReader::JournalReader(const std::string_view bytes): _bytes{bytes} { readBegin(); }

void JournalReader::readBegin() {
    const std::string_view magic = _bytes.substr(0, Magic.size());
    std::string_view rest = _bytes.substr(magic.size());
    if(magic != Magic.substr(0, magic.size()))
        return;
    if(_bytes.size() >= HeadSize) {
        takeNumber(rest, _version);
        if(_version != Version) {
            _state = JournalState::OtherVersion;
            return;
        }
    }
    if(_bytes.size() < HeadSize + FrameSize + BeginSize) {
        _state = JournalState::Unbegun;
        return;
    }

    _offset = HeadSize;
    std::string_view payload;
    FileIdentity base;
    if(!takePayload(payload) || payload.size() != BeginSize || payload[0] != BeginKind)
        return;
    const bool hasBase = payload[1];
    payload.remove_prefix(2);
    takeIdentity(payload, base);
    if(hasBase)
        _base = base;
    _state = JournalState::Whole;
}

/* False at a record that isn't whole, or not of this chain */
bool JournalReader::takePayload(std::string_view& payload) {
    std::string_view in = _bytes.substr(_offset);
    std::uint64_t checksum;
    std::uint32_t size;
    if(!takeNumber(in, checksum))
        return false;
    const std::string_view sizeAndPayload = in;
    if(!takeNumber(in, size) || size == 0 || in.size() < size)
        return false;
    if(checksumOf(sizeAndPayload.substr(0, sizeof(size) + size), _chain) != checksum)
        return false;
    payload = in.substr(0, size);
    _chain.checksum = checksum;
    _offset += FrameSize + size;
    return true;
}

const JournalRecord* JournalReader::next() {
    if(_state != JournalState::Whole)
        return nullptr;
    const std::size_t offset = _offset;
    const JournalChain chain = _chain;
    std::string_view payload;
    if(takePayload(payload)) {
        const char kind = payload[0];
        payload.remove_prefix(1);
        if((kind == ChangeKind && readChange(payload)) || (kind == SaveKind && readSave(payload)))
            return &_record;
    }
    _offset = offset;
    _chain = chain;
    return nullptr;
}

bool JournalReader::readChange(std::string_view payload) {
    _record = {};
    if(payload.empty())
        return false;
    const char flags = payload[0];
    payload.remove_prefix(1);
    if((flags & ~(HasOldValue | HasNewValue)) || !takeText(payload, _record.path) ||
        _record.path.find('\0') != std::string_view::npos)
        return false;
    _record.hasOldValue = flags & HasOldValue;
    if(flags & HasNewValue) {
        if(!takeValue(payload, _value))
            return false;
        _record.newValue = &_value;
    }
    return payload.empty();
}

bool JournalReader::readSave(std::string_view payload) {
    _record = {};
    _record.kind = JournalRecord::Kind::Save;
    return takeText(payload, _record.path) && takeIdentity(payload, _record.content) &&
        payload.empty();
}

}
