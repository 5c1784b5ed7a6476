#include "editor/ProjectServer.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <locale>
#include <random>
#include <string_view>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/DebugStl.h>
/* Nowhere else: it takes seconds to compile, and other headers don't need to know of it */
#include <httplib.h>

#include "editor/ServedBody.h"
#include "editor/ServedFile.h"
#include "editor/ServerConnection.h"
#include "editor/contentType.h"
#include "editor/escapedForUrl.h"
#include "editor/lowerCase.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* A browser opens six connections and lets them idle */
constexpr std::size_t ThreadCount = 16;
constexpr int MaxRequestsOfConnection = 1000;
constexpr std::size_t SentPieceSize = 64 * 1024;

/* What the library reads requests from and writes answers to */
class ConnectionStream: public httplib::Stream {
public:
    explicit ConnectionStream(ServerConnection& connection): _connection{connection} {}

    bool is_readable() const override { return !_connection.isStopping(); }
    bool is_writable() const override { return !_connection.isStopping(); }

    ssize_t read(char* const out, const std::size_t size) override {
        return _connection.read(out, size);
    }

    ssize_t write(const char* const data, const std::size_t size) override {
        return _connection.write(data, size) ? ssize_t(size) : -1;
    }

    /* For headers that the library adds to the request and nobody reads */
    void get_remote_ip_and_port(std::string&, int&) const override {}
    void get_local_ip_and_port(std::string&, int&) const override {}

    socket_t socket() const override { return _connection.socket(); }

private:
    ServerConnection& _connection;
};

std::string newBoundary() {
    std::random_device random;
    std::string out;
    for(int i = 0; i != 4; ++i)
        out += std::to_string(random());
    return out;
}

/* Of those that are given here and of the library's own */
const char* reasonPhrase(const int status) {
    switch(status) {
        case 400:
            return "Bad Request";
        case 403:
            return "Forbidden";
        case 404:
            return "Not Found";
        case 405:
            return "Method Not Allowed";
        case 414:
            return "URI Too Long";
        case 416:
            return "Range Not Satisfiable";
        case 421:
            return "Misdirected Request";
        default:
            return "Internal Server Error";
    }
}

void answerProblem(httplib::Response& response, const int status) {
    response.status = status;
    response.set_content(
        std::to_string(status) + " " + reasonPhrase(status) + "\n", "text/plain; charset=utf-8");
}

void setBody(httplib::Response& response, ServedBody body, const std::string& type) {
    const auto shared = std::make_shared<const ServedBody>(std::move(body));
    response.set_content_provider(std::size_t(shared->size()), type,
        [shared](const std::size_t offset, std::size_t, httplib::DataSink& sink) {
            std::array<char, SentPieceSize> piece;
            const std::size_t size = shared->read(offset, piece.data(), piece.size());
            return size != 0 && sink.write(piece.data(), size);
        });
}

void answerParts(httplib::Response& response, ServedFile file, const std::vector<ByteRange>& ranges,
    const std::string& type) {
    const std::uint64_t size = file.size();
    if(ranges.empty()) {
        answerProblem(response, 416);
        response.set_header("Content-Range", "bytes */" + std::to_string(size));
        return;
    }
    response.status = 206;
    if(ranges.size() == 1) {
        response.set_header("Content-Range", contentRange(ranges[0], size));
        return setBody(response, ServedBody{std::move(file), ranges[0]}, type);
    }
    const std::string boundary = newBoundary();
    setBody(response, ServedBody{std::move(file), ranges, type, boundary},
        "multipart/byteranges; boundary=" + boundary);
}

void answerFile(const httplib::Request& request, httplib::Response& response, FileLookup found) {
    const std::string type{contentType(found.name)};
    const std::uint64_t size = found.file->size();
    response.set_header("Accept-Ranges", "bytes");
    /* Files are given no tags, so that whatever a client compares with has changed meanwhile */
    const bool isRangeWanted = request.method == "GET" && !request.has_header("If-Range");
    if(const auto ranges = requestedRanges(
           isRangeWanted ? request.get_header_value("Range") : std::string{}, size))
        return answerParts(response, std::move(*found.file), *ranges, type);
    response.status = 200;
    /* The library expects at least a byte of what is read on the way */
    if(size == 0)
        return response.set_header("Content-Type", type);
    setBody(response, ServedBody{std::move(*found.file), {0, size}}, type);
}

void answerRedirect(const httplib::Request& request, httplib::Response& response) {
    response.status = 302;
    /* Relative to what was asked for. A path that begins with two slashes would lead to another
       machine, a name with a colon in it to another scheme. */
    const std::string name = request.path.substr(request.path.rfind('/') + 1);
    response.set_header("Location", "./" + escapedForUrl(name) + "/");
}

/* A page from elsewhere whose name was made to lead here could otherwise read the files: to the browser
   they'd be of that name. Any port, as one may be forwarded to ours. */
bool isForThisMachine(const std::string_view host) {
    const std::size_t nameSize = std::min(host.find(':'), host.size());
    const std::string_view name = host.substr(0, nameSize), port = host.substr(nameSize);
    constexpr std::string_view Local = "localhost";
    const bool isLocal = std::equal(name.begin(), name.end(), Local.begin(), Local.end(),
        [](const char a, const char b) { return lowerCase(a) == b; });
    return (isLocal || name == "127.0.0.1") &&
        (port.empty() || port.find_first_not_of("0123456789", 1) == std::string_view::npos);
}

/* Old clients don't say what machine they mean */
bool isForThisMachine(const httplib::Request& request) {
    const auto [begin, end] = request.headers.equal_range("Host");
    return std::all_of(
        begin, end, [](const auto& header) { return isForThisMachine(header.second); });
}

void answer(
    const std::string& folder, const httplib::Request& request, httplib::Response& response) {
    if(request.method != "GET" && request.method != "HEAD") {
        answerProblem(response, 405);
        return response.set_header("Allow", "GET, HEAD");
    }
    if(!isForThisMachine(request))
        return answerProblem(response, 421);
    FileLookup found = findServedFile(folder, request.path);
    switch(found.result) {
        case FileLookup::Result::File:
            return answerFile(request, response, std::move(found));
        case FileLookup::Result::FolderWithoutSlash:
            return answerRedirect(request, response);
        case FileLookup::Result::NotFound:
            return answerProblem(response, 404);
        case FileLookup::Result::Forbidden:
            return answerProblem(response, 403);
        case FileLookup::Result::Failed:
            return answerProblem(response, 500);
    }
}

/* The library's own answers, to what it doesn't understand. Where such a request ends isn't known, so
   none can follow. */
void completeProblem(const httplib::Request& request, httplib::Response& response) {
    if(!response.body.empty())
        return;
    answerProblem(response, response.status);
    if(request.get_header_value("Connection") != "close")
        response.set_header("Connection", "close");
}

/* The library's regular expressions fill two tables of the locale when they first need them, in any
   thread and without a lock. What is filled isn't written again. */
void fillLocaleTables() {
    const auto& characters = std::use_facet<std::ctype<char>>(std::locale{});
    for(int i = 1; i != 256; ++i)
        characters.narrow(char(i), '\0');
    characters.widen(' ');
}

bool hasBody(const httplib::Request& request) {
    return request.has_header("Transfer-Encoding") ||
        (request.has_header("Content-Length") && request.get_header_value("Content-Length") != "0");
}

}

/* The library's parser, answers and accepting thread, on connections of ours. Those of the library
   tell nobody of requests that aren't HTTP nor how much was sent, a client that sends a byte now and
   then or doesn't read holds up stop(), and so does one that does nothing. */
class ProjectServer::HttpServer: private httplib::Server {
public:
    explicit HttpServer(std::string folder, StoreLog& log);
    ~HttpServer() override;

    /* Port, or nothing with the reason in errno */
    std::optional<int> start(int port);

    const std::string& folder() const { return _folder; }

private:
    enum class Next { Request, Close };

    void run();
    void serve(ServerConnection& connection);
    Next serveRequest(ServerConnection& connection, bool isLast);
    bool process_and_close_socket(socket_t socket) override;

    std::string _folder;
    StoreLog& _log;
    int _stopEvent = -1;
    std::thread _thread;
};

ProjectServer::HttpServer::HttpServer(std::string folder, StoreLog& log):
    _folder{std::move(folder)},
    _log{log} {
    new_task_queue = [] { return new httplib::ThreadPool{ThreadCount}; };
    set_address_family(AF_INET);
    /* By default the library sets SO_REUSEPORT, with which two editors share a port in silence */
    set_socket_options([](const socket_t socket) {
        const int isOn = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &isOn, sizeof(isOn));
    });
    /* Also to what isn't there yet */
    set_default_headers({{"Cache-Control", "no-cache"}});
    set_keep_alive_timeout(ServerLimits{}.idle / std::chrono::seconds{1});
    set_keep_alive_max_count(MaxRequestsOfConnection);
    set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
        answer(_folder, request, response);
        return HandlerResponse::Handled;
    });
    set_error_handler([](const httplib::Request& request, httplib::Response& response) {
        completeProblem(request, response);
    });
}

/* Not by the library's stop(): it does nothing until the thread runs, and closes the socket while the
   thread still waits on it, when its number may become somebody else's */
ProjectServer::HttpServer::~HttpServer() {
    eventfd_write(_stopEvent, 1);
    const socket_t socket = svr_sock_.exchange(INVALID_SOCKET);
    if(socket != INVALID_SOCKET)
        shutdown(socket, SHUT_RDWR);
    if(_thread.joinable())
        _thread.join();
    if(socket != INVALID_SOCKET)
        close(socket);
    close(_stopEvent);
}

std::optional<int> ProjectServer::HttpServer::start(const int port) {
    fillLocaleTables();
    /* Without it no connection would notice that the server stops */
    _stopEvent = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if(_stopEvent == -1)
        return {};
    errno = 0;
    const int bound = port == 0           ? bind_to_any_port("127.0.0.1")
        : bind_to_port("127.0.0.1", port) ? port
                                          : -1;
    if(bound == -1)
        return {};
    /* The library lets five wait, and who comes as the sixth tries again only after a second */
    ::listen(svr_sock_, SOMAXCONN);
    _thread = std::thread{[this] { run(); }};
    return bound;
}

void ProjectServer::HttpServer::run() {
    std::string problem;
    try {
        listen_after_bind();
        problem = std::strerror(errno);
    } catch(const std::exception& exception) {
        problem = exception.what();
    }
    /* The library has closed the socket unless it was told to stop */
    if(svr_sock_.exchange(INVALID_SOCKET) != INVALID_SOCKET)
        _log.append(LogLevel::Error, "The server has ended: " + problem);
}

bool ProjectServer::HttpServer::process_and_close_socket(const socket_t socket) {
    ServerConnection connection{socket, _stopEvent};
    try {
        serve(connection);
    } catch(const std::exception& exception) {
        _log.append(LogLevel::Error, std::string{"A connection was closed: "} + exception.what());
    }
    return true;
}

void ProjectServer::HttpServer::serve(ServerConnection& connection) {
    for(int i = 1; connection.waitForRequest(); ++i) {
        const Next next = serveRequest(connection, i == MaxRequestsOfConnection);
        const ServedRequest request = connection.request();
        _log.append(requestLevel(request.status), requestMessage(request));
        if(next == Next::Close || request.isBrokenOff)
            break;
    }
    connection.finish();
}

ProjectServer::HttpServer::Next ProjectServer::HttpServer::serveRequest(
    ServerConnection& connection, const bool isLast) {
    ConnectionStream stream{connection};
    bool isUnderstood = false, isClosing = isLast;
    const bool isAnswered = process_request(
        stream, isLast, isClosing, [&](httplib::Request& request) {
            isUnderstood = true;
            /* The library would take the ranges as they are, also those that end behind the file */
            request.ranges.clear();
            /* Nobody is asked to send more, a body isn't read */
            request.headers.erase("Expect");
            if(hasBody(request)) {
                request.headers.erase("Connection");
                request.set_header("Connection", "close");
                isClosing = true;
            }
        });
    return isAnswered && isUnderstood && !isClosing ? Next::Request : Next::Close;
}

ProjectServer::ProjectServer(QuillmereEditorApplication& application, const StoreLog::Echo echo):
    _log{application, _lines, echo} {}

ProjectServer::~ProjectServer() { stop(); }

std::optional<int> ProjectServer::start(const std::string& folder, const int port) {
    CORRADE_ASSERT(!_server, "ProjectServer::start(): already serving" << _server->folder(), {});
    std::string problem;
    std::optional<std::string> canonical = canonicalFolder(folder, problem);
    if(!canonical) {
        _log.append(LogLevel::Error, "Can't serve " + folder + ": " + problem);
        return {};
    }

    /* The library has SIGPIPE ignored in the whole process, which programs that the editor starts
       would inherit. Here nothing needs it. */
    struct sigaction before;
    sigaction(SIGPIPE, nullptr, &before);
    auto server = std::make_unique<HttpServer>(std::move(*canonical), _log);
    sigaction(SIGPIPE, &before, nullptr);

    const std::optional<int> out = server->start(port);
    if(!out) {
        _log.append(LogLevel::Error,
            "Can't serve " + server->folder() + " on port " + std::to_string(port) + ": " +
                std::strerror(errno));
        return {};
    }
    _server = std::move(server);
    _log.append(LogLevel::Info,
        "Serving " + _server->folder() + " on http://127.0.0.1:" + std::to_string(*out) + "/");
    return out;
}

void ProjectServer::stop() {
    if(!_server)
        return;
    const std::string folder = _server->folder();
    _server = nullptr;
    _log.append(LogLevel::Info, "No longer serving " + folder);
}

}
