#include "editor/ProjectServer.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <regex>

#include <gmock/gmock.h>

#include "FewDescriptors.h"
#include "ServerFixture.h"
#include "testing/TemporaryFolder.h"
#include "testing/sanitizer.h"

namespace QuillmereEngine { namespace {

using namespace std::string_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

struct ProjectServerTest: ServerFixture {
    ProjectServerTest() { start(); }

    /* Status, the headers named and the body of what curl prints */
    std::string answer(const std::string& path, std::vector<std::string> arguments = {}) const {
        arguments.insert(arguments.end(), {"--include", url(path)});
        return curl(std::move(arguments)).out;
    }
};

TEST_F(ProjectServerTest, FileIsServed) {
    EXPECT_EQ(get("/a.txt"), "content of a");
    EXPECT_EQ(get("/sub/"), "<p>sub");
    EXPECT_EQ(get("/sub/b.json"), "{}");
    EXPECT_EQ(get("/%61.txt?query=1"), "content of a");
}

TEST_F(ProjectServerTest, NoOtherAddressAnswers) {
    EXPECT_EQ(curl({"http://127.0.0.2:" + std::to_string(port) + "/a.txt"}).out, "");
    EXPECT_EQ(curl({"http://[::1]:" + std::to_string(port) + "/a.txt"}).out, "");
}

TEST_F(ProjectServerTest, OtherHostsAreNotServed) {
    const auto ofHost = [this](const std::string& header) {
        return ask("GET /a.txt HTTP/1.1\r\n" + header + "Connection: close\r\n\r\n");
    };
    for(const char* const host: {"127.0.0.1", "127.0.0.1:80", "localhost", "LocalHost:8080"})
        EXPECT_THAT(ofHost("Host: "s + host + "\r\n"), EndsWith("\r\n\r\ncontent of a")) << host;
    EXPECT_THAT(ofHost(""), EndsWith("\r\n\r\ncontent of a"));
    for(const char* const header:
        {"Host: example.com", "host: example.com:80", "Host: localhost.example.com",
            "Host: 127.0.0.1.example.com", "Host: 127.0.0.1:80.example.com", "Host: 127.0.0.2",
            "Host: localhost\r\nHost: example.com", "Host: user@localhost", "Host: [::1]"})
        EXPECT_THAT(ofHost(header + "\r\n"s), StartsWith("HTTP/1.1 421 Misdirected Request\r\n"))
            << header;
    EXPECT_THAT(requestLines().back(), "[warn] GET /a.txt 421 24 bytes T ms");
}

TEST_F(ProjectServerTest, TypesAreNamed) {
    outer.write("site/a.wasm", "w");
    outer.write("site/unknown.xyz", "x");
    const auto type = [this](const std::string& path) {
        return curl({"--output", "/dev/null", "--write-out", "%{content_type}", url(path)}).out;
    };
    EXPECT_EQ(type("/sub/"), "text/html; charset=utf-8");
    EXPECT_EQ(type("/sub/b.json"), "application/json");
    EXPECT_EQ(type("/a.wasm"), "application/wasm");
    EXPECT_EQ(type("/empty.txt"), "text/plain; charset=utf-8");
    EXPECT_EQ(type("/unknown.xyz"), "application/octet-stream");
}

TEST_F(ProjectServerTest, NothingIsCached) {
    EXPECT_THAT(answer("/a.txt"), HasSubstr("\r\nCache-Control: no-cache\r\n"));
    EXPECT_THAT(answer("/nothing"), HasSubstr("\r\nCache-Control: no-cache\r\n"));
}

TEST_F(ProjectServerTest, EmptyFileIsServed) {
    const std::string out = answer("/empty.txt");
    EXPECT_THAT(out, StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(out, HasSubstr("\r\nContent-Length: 0\r\n"));
    EXPECT_THAT(out, EndsWith("\r\n\r\n"));
}

TEST_F(ProjectServerTest, HeadHasNoBody) {
    const CurlResult result = curl({"--head", url("/a.txt")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(result.out, HasSubstr("\r\nContent-Length: 12\r\n"));
    EXPECT_THAT(result.out, EndsWith("\r\n\r\n"));
    EXPECT_THAT(requestLines(), ElementsAre("[info] HEAD /a.txt 200 0 bytes T ms"));
}

TEST_F(ProjectServerTest, MissingFileIsNotFound) {
    EXPECT_THAT(answer("/nothing.txt"), StartsWith("HTTP/1.1 404 Not Found\r\n"));
    EXPECT_EQ(get("/nothing.txt"), "404 Not Found\n");
    EXPECT_THAT(requestLines(),
        ElementsAre("[warn] GET /nothing.txt 404 14 bytes T ms",
            "[warn] GET /nothing.txt 404 14 bytes T ms"));
}

TEST_F(ProjectServerTest, FoldersAreNotListed) {
    EXPECT_EQ(status("/"), "404");
    std::filesystem::remove(root + "/sub/index.html");
    EXPECT_EQ(status("/sub"), "404");
    EXPECT_EQ(status("/sub/"), "404");
}

TEST_F(ProjectServerTest, FolderWithoutSlashLeadsToTheOneWith) {
    outer.write("site/sub/index.html", "<p>sub");
    std::filesystem::create_directories(root + "/a b:c");
    outer.write("site/a b:c/index.html", "<p>odd");
    EXPECT_THAT(answer("/sub"), HasSubstr("\r\nLocation: ./sub/\r\n"));
    /* Not to the machine "sub" */
    EXPECT_THAT(answer("//sub"), HasSubstr("\r\nLocation: ./sub/\r\n"));
    EXPECT_EQ(curl({"--location", url("/a%20b:c")}).out, "<p>odd");
}

struct MethodTest: ProjectServerTest, ::testing::WithParamInterface<const char*> {};

TEST_P(MethodTest, IsNotAllowed) {
    const std::string out = answer("/a.txt", {"--request", GetParam(), "--data", "body"});
    EXPECT_THAT(out, StartsWith("HTTP/1.1 405 Method Not Allowed\r\n"));
    EXPECT_THAT(out, HasSubstr("\r\nAllow: GET, HEAD\r\n"));
    EXPECT_THAT(requestLines(), ElementsAre("[warn] "s + GetParam() + " /a.txt 405 23 bytes T ms"));
    EXPECT_EQ(Testing::readFile(root + "/a.txt"), "content of a");
}

INSTANTIATE_TEST_SUITE_P(, MethodTest,
    ::testing::Values("POST", "PUT", "DELETE", "PATCH", "OPTIONS", "TRACE", "CONNECT"),
    [](const auto& row) { return std::string{row.param}; });

/* Used to be taken for the next request */
TEST_F(ProjectServerTest, BodyIsNoRequest) {
    const std::string inner = "GET /a.txt HTTP/1.1\r\n\r\n";
    for(const char* const method: {"GET", "POST"})
        EXPECT_THAT(ask(method + " /sub/b.json HTTP/1.1\r\nContent-Length: "s +
                        std::to_string(inner.size()) + "\r\n\r\n" + inner),
            Not(HasSubstr("content of a")));
    EXPECT_THAT(ask("GET /sub/b.json HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n" + inner),
        Not(HasSubstr("content of a")));
    EXPECT_EQ(requestLines().size(), 3u);
}

TEST_F(ProjectServerTest, LongBodyIsAnsweredWithoutReadingIt) {
    const std::string file = outer.write("long", std::string(10'000'000, 'x'));
    const CurlResult result = curl({"--data-binary", "@" + file, url("/a.txt")});
    EXPECT_EQ(result.out, "405 Method Not Allowed\n");
}

struct RangeCase {
    const char* name;
    const char* range;
    const char* status;
    const char* contentRange;
    const char* body;
};

struct ServedRangeTest: ProjectServerTest, ::testing::WithParamInterface<RangeCase> {};

TEST_P(ServedRangeTest, IsAnswered) {
    const RangeCase& row = GetParam();
    const std::string out = answer("/a.txt", {"--header", "Range: "s + row.range});
    EXPECT_THAT(out, StartsWith("HTTP/1.1 "s + row.status));
    if(row.contentRange)
        EXPECT_THAT(out, HasSubstr("\r\nContent-Range: "s + row.contentRange + "\r\n"));
    else
        EXPECT_THAT(out, Not(HasSubstr("Content-Range")));
    EXPECT_THAT(out,
        HasSubstr("\r\nContent-Length: " + std::to_string(std::string{row.body}.size()) + "\r\n"));
    EXPECT_THAT(out, EndsWith("\r\n\r\n"s + row.body));
}

constexpr const char* Unsatisfiable = "416 Range Not Satisfiable\n";

INSTANTIATE_TEST_SUITE_P(, ServedRangeTest,
    ::testing::Values(RangeCase{"Single", "bytes=0-6", "206", "bytes 0-6/12", "content"},
        RangeCase{"OneByte", "bytes=11-11", "206", "bytes 11-11/12", "a"},
        RangeCase{"OpenEnd", "bytes=8-", "206", "bytes 8-11/12", "of a"},
        RangeCase{"Suffix", "bytes=-4", "206", "bytes 8-11/12", "of a"},
        RangeCase{"LongSuffix", "bytes=-100", "206", "bytes 0-11/12", "content of a"},
        RangeCase{"BehindTheEnd", "bytes=8-100", "206", "bytes 8-11/12", "of a"},
        RangeCase{"Unsatisfiable", "bytes=12-", "416", "bytes */12", Unsatisfiable},
        RangeCase{"EmptySuffix", "bytes=-0", "416", "bytes */12", Unsatisfiable},
        RangeCase{"Overlapping", "bytes=0-8,1-9", "200", nullptr, "content of a"}),
    [](const auto& row) { return std::string{row.param.name}; });

TEST_F(ProjectServerTest, SeveralRangesAreServed) {
    const std::string out = answer("/a.txt", {"--range", "0-1,-1"});
    EXPECT_THAT(out, StartsWith("HTTP/1.1 206 Partial Content\r\n"));
    std::smatch boundary;
    ASSERT_TRUE(std::regex_search(
        out, boundary, std::regex{"Content-Type: multipart/byteranges; boundary=([0-9]+)\r\n"}));
    const std::string mark = "--" + boundary[1].str(),
                      type = "\r\nContent-Type: text/plain; charset=utf-8\r\n";
    EXPECT_THAT(out,
        EndsWith("\r\n\r\n" + mark + type + "Content-Range: bytes 0-1/12\r\n\r\nco\r\n" + mark +
            type + "Content-Range: bytes 11-11/12\r\n\r\na\r\n" + mark + "--\r\n"));
}

TEST_F(ProjectServerTest, RangeOfAnEmptyFileCannotBeHad) {
    EXPECT_EQ(status("/empty.txt", {"--range", "0-"}), "416");
}

TEST_F(ProjectServerTest, RangeOfWhatMayHaveChangedIsTheWhole) {
    EXPECT_EQ(curl({"--range", "0-1", "--header", "If-Range: \"tag\"", url("/a.txt")}).out,
        "content of a");
}

TEST_F(ProjectServerTest, GreatFileIsServedInPieces) {
    std::string content;
    for(int i = 0; content.size() < 5'000'000; ++i)
        content += std::to_string(i);
    outer.write("site/great.bin", content);
    EXPECT_EQ(get("/great.bin"), content);
    EXPECT_EQ(curl({"--range", "4000000-4999990", url("/great.bin")}).out,
        content.substr(4'000'000, 999'991));
    /* A client that has everything is gone before its line is written */
    EXPECT_THAT(requestLines(),
        UnorderedElementsAre(
            "[info] GET /great.bin 200 " + std::to_string(content.size()) + " bytes T ms",
            "[info] GET /great.bin 206 999991 bytes T ms"));
}

struct TraversalTest: ProjectServerTest, ::testing::WithParamInterface<const char*> {};

TEST_P(TraversalTest, LeadsNowhere) {
    namespace fs = std::filesystem;
    fs::create_symlink("../secret.txt", root + "/out");
    fs::create_symlink("..", root + "/up");
    fs::create_symlink("/", root + "/system");
    fs::create_symlink("nothing", root + "/dangling");
    const std::string out = answer(GetParam());
    EXPECT_THAT(out, StartsWith("HTTP/1.1 404 Not Found\r\n"));
    EXPECT_THAT(out, EndsWith("\r\n\r\n404 Not Found\n"));
}

INSTANTIATE_TEST_SUITE_P(, TraversalTest,
    ::testing::Values("/../secret.txt", "/../../../../../../../etc/passwd", "/sub/../../secret.txt",
        "/./../secret.txt", "/..", "/../", "/../site/a.txt", "/../site2/secret.txt",
        "//../secret.txt", "/..//secret.txt", "/.%2e/secret.txt", "/%2e%2e/secret.txt",
        "/%2E%2E/secret.txt", "/%2e%2e%2fsecret.txt", "/..%2fsecret.txt", "/..%2Fsecret.txt",
        "/%2f..%2fsecret.txt", "/..%5csecret.txt", "/..\\secret.txt", "/%5c..%5csecret.txt",
        "/%252e%252e/secret.txt", "/%252e%252e%252fsecret.txt", "/..%252fsecret.txt",
        "/%c0%ae%c0%ae/secret.txt", "/..%c0%afsecret.txt", "/%e0%80%ae%e0%80%ae/secret.txt",
        "/..%00/secret.txt", "/a.txt%00", "/a.txt%00.png", "/%00/../secret.txt",
        "/%u002e%u002e/secret.txt", "/..;/secret.txt", "/.../secret.txt", "/....//secret.txt",
        "//etc/passwd", "/%2fetc/passwd", "///etc/passwd", "/etc/passwd", "/out", "/up/secret.txt",
        "/up/", "/up/site2/secret.txt", "/system/etc/passwd", "/dangling", "/sub/index.html/",
        "/a.txt/../a.txt"),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST_F(ProjectServerTest, LinksInsideAreFollowed) {
    std::filesystem::create_symlink("a.txt", root + "/link");
    EXPECT_EQ(get("/link"), "content of a");
}

TEST_F(ProjectServerTest, PathOfATargetWithSchemeIsNoFile) {
    EXPECT_THAT(ask("GET http://127.0.0.1/a.txt HTTP/1.0\r\n\r\n"), HasSubstr(" 404 "));
    EXPECT_THAT(ask("GET file:///etc/passwd HTTP/1.0\r\n\r\n"), HasSubstr(" 404 "));
    EXPECT_THAT(ask("GET a.txt HTTP/1.0\r\n\r\n"), HasSubstr(" 404 "));
}

struct MalformedCase {
    const char* name;
    std::string bytes, line;
};

struct MalformedTest: ProjectServerTest, ::testing::WithParamInterface<MalformedCase> {};

TEST_P(MalformedTest, IsAnsweredAndALine) {
    const std::string out = ask(GetParam().bytes);
    EXPECT_THAT(out, StartsWith("HTTP/1.1 4"));
    EXPECT_THAT(out, HasSubstr("\r\nConnection: close\r\n"));
    EXPECT_THAT(requestLines(), ElementsAre(GetParam().line));
}

const MalformedCase MalformedCases[]{
    {"EmptyLine", "\r\n", "[warn] - - 400 16 bytes T ms"},
    {"NoMethod", " /a.txt HTTP/1.1\r\n\r\n", "[warn] - - 400 16 bytes T ms"},
    {"MethodOnly", "GET\r\n\r\n", "[warn] GET - 400 16 bytes T ms"},
    {"NoVersion", "GET /a.txt\r\n\r\n", "[warn] GET /a.txt 400 16 bytes T ms"},
    {"OtherVersion", "GET /a.txt HTTP/3.7\r\n\r\n", "[warn] GET /a.txt 400 16 bytes T ms"},
    {"OtherMethod", "FETCH /a.txt HTTP/1.1\r\n\r\n", "[warn] FETCH /a.txt 400 16 bytes T ms"},
    {"SpaceInPath", "GET /a b HTTP/1.1\r\n\r\n", "[warn] GET /a 400 16 bytes T ms"},
    {"Junk", "\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03\xff\xfe"s,
        "[warn] - - 400 16 bytes T ms"},
    {"JunkWithNewlines", "\n\n\x1b[31m\n"s, "[warn] - - 400 16 bytes T ms"},
    {"Nuls", std::string(1000, '\0'), "[warn] - - 400 16 bytes T ms"},
    {"CutLine", "GET /a.t", "[warn] GET /a.t 400 16 bytes T ms"},
    {"CutHeaders", "GET /a.txt HTTP/1.1\r\nAccept: */*\r\n", "[warn] GET /a.txt 400 16 bytes T ms"},
    {"GreatHeader", "GET /a.txt HTTP/1.1\r\nA: " + std::string(20'000, 'a') + "\r\n\r\n",
        "[warn] GET /a.txt 400 16 bytes T ms"},
    {"EndlessHeaders",
        "GET /a.txt HTTP/1.1\r\n" +
            [] {
                std::string out;
                for(int i = 0; i != 100'000; ++i)
                    out += "A: b\r\n";
                return out;
            }(),
        "[warn] GET /a.txt 400 16 bytes T ms"},
    {"EndlessLine", std::string(1'000'000, 'a'), "[warn] - - 414 17 bytes T ms"},
    {"GreatPath", "GET /" + std::string(10'000, 'a') + " HTTP/1.1\r\n\r\n",
        "[warn] GET /" + std::string(999, 'a') + "\\...(9001_more) 414 17 bytes T ms"},
    {"RangeInWords", "GET /a.txt HTTP/1.1\r\nRange: bytes=a-b\r\n\r\n",
        "[warn] GET /a.txt 416 26 bytes T ms"},
    {"GreatRange", "GET /a.txt HTTP/1.1\r\nRange: bytes=99999999999999999999999-\r\n\r\n",
        "[warn] GET /a.txt 416 26 bytes T ms"},
    {"LongRange", "GET /a.txt HTTP/1.1\r\nRange: bytes=" + std::string(8000, ',') + "\r\n\r\n",
        "[warn] GET /a.txt 416 26 bytes T ms"},
};

INSTANTIATE_TEST_SUITE_P(, MalformedTest, ::testing::ValuesIn(MalformedCases),
    [](const auto& row) { return std::string{row.param.name}; });

TEST_F(ProjectServerTest, WhatFollowsAMalformedRequestIsNotAnswered) {
    const std::string out = ask("junk\r\n\r\nGET /a.txt HTTP/1.1\r\n\r\n");
    EXPECT_THAT(out, Not(HasSubstr("content of a")));
    EXPECT_THAT(requestLines(), ElementsAre("[warn] junk - 400 16 bytes T ms"));
}

TEST_F(ProjectServerTest, PathCannotBreakOrFakeALine) {
    ask("GET /a\r[error]\x1b[2K\xff\xe2\x80\xae\\x0a HTTP/1.1\r\n\r\n");
    get("/%0a[error]%20fake");
    EXPECT_THAT(requestLines(),
        ElementsAre("[warn] GET /a\\x0d[error]\\x1b[2K\\xff\\u{202e}\\\\x0a 404 14 bytes T ms",
            "[warn] GET /%0a[error]%20fake 404 14 bytes T ms"));
}

TEST_F(ProjectServerTest, ConnectionThatAsksForNothingIsNoLine) {
    EXPECT_EQ(ask(""), "");
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(ProjectServerTest, SlowRequestIsUnderstood) {
    const RawClient client{port};
    for(const char c: "GET /a.txt HTTP/1.1\r\nConnection: close\r\n\r\n"s)
        client.send(std::string(1, c));
    EXPECT_THAT(client.receiveAll(), EndsWith("\r\n\r\ncontent of a"));
}

TEST_F(ProjectServerTest, ConnectionServesSeveralRequests) {
    const std::string request = "GET /a.txt HTTP/1.1\r\n\r\n";
    const std::string out = ask(request + "GET /nothing HTTP/1.1\r\n\r\n" + request);
    EXPECT_THAT(out, EndsWith("\r\n\r\ncontent of a"));
    EXPECT_THAT(requestLines(),
        ElementsAre("[info] GET /a.txt 200 12 bytes T ms", "[warn] GET /nothing 404 14 bytes T ms",
            "[info] GET /a.txt 200 12 bytes T ms"));
}

TEST_F(ProjectServerTest, OldClientsAreAnswered) {
    EXPECT_THAT(ask("GET /a.txt HTTP/1.0\r\n\r\n"), EndsWith("\r\n\r\ncontent of a"));
}

/* SIGPIPE would end the editor */
TEST_F(ProjectServerTest, ClientThatGoesBreaksItsAnswerOff) {
    constexpr std::size_t Size = 50'000'000;
    outer.write("site/great.bin", std::string(Size, 'x'));
    {
        const RawClient client{port, 4096};
        client.send("GET /great.bin HTTP/1.1\r\n\r\n");
        EXPECT_THAT(client.receive(100), StartsWith("HTTP/1.1 200 OK\r\n"));
    }
    EXPECT_EQ(get("/a.txt"), "content of a");
    EXPECT_THAT(requestLines(),
        Contains(::testing::AllOf(StartsWith("[info] GET /great.bin 200 "),
            EndsWith(" bytes T ms, broken off"), Not(HasSubstr(std::to_string(Size))))));
}

TEST_F(ProjectServerTest, FileThatBecomesShorterBreaksItsAnswerOff) {
    constexpr std::size_t Size = 50'000'000;
    const std::string file = outer.write("site/great.bin", std::string(Size, 'x'));
    const RawClient client{port, 4096};
    client.send("GET /great.bin HTTP/1.1\r\n\r\n");
    client.receive(100);
    std::filesystem::resize_file(file, 10);
    EXPECT_LT(client.receiveAll().size(), Size);
    EXPECT_THAT(requestLines(), ElementsAre(EndsWith(" bytes T ms, broken off")));
}

TEST_F(ProjectServerTest, FailureOfTheMachineIsAnErrorLine) {
    if(Testing::IsSanitized)
        GTEST_SKIP() << "The sanitizer needs descriptors itself";
    const RawClient client{port};
    const std::string request = "GET /a.txt HTTP/1.1\r\n\r\n";
    client.send(request);
    EXPECT_THAT(client.receive(1), StartsWith("HTTP/1.1 200 OK\r\n"));
    std::string out;
    {
        const FewDescriptors limit;
        client.send("GET /sub/b.json HTTP/1.1\r\nConnection: close\r\n\r\n");
        out = client.receiveAll();
    }
    EXPECT_THAT(out, EndsWith("\r\n\r\n500 Internal Server Error\n"));
    EXPECT_THAT(requestLines(),
        ElementsAre(
            "[info] GET /a.txt 200 12 bytes T ms", "[error] GET /sub/b.json 500 26 bytes T ms"));
}

TEST_F(ProjectServerTest, IdleConnectionIsClosed) {
    const RawClient client{port};
    EXPECT_EQ(client.receiveAll(), "");
}

TEST_F(ProjectServerTest, EachLineIsNoticed) {
    const int before = application.noticeCount;
    get("/a.txt");
    requestLines();
    EXPECT_EQ(application.noticeCount, before + 2);
}

TEST(ProjectServerSignalTest, HandlingOfSignalsStaysAsItWas) {
    const auto before = std::signal(SIGPIPE, SIG_DFL);
    ServerFixture::Application application;
    ProjectServer server{application, StoreLog::Echo::No};
    const Testing::TemporaryFolder folder;
    EXPECT_TRUE(server.start(folder.path(), 0));
    EXPECT_EQ(std::signal(SIGPIPE, before), SIG_DFL);
}

}}
