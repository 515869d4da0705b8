#include "online/soap_reply.h"

#include <gtest/gtest.h>

#include "online/soap_envelope.h"
#include "support/data_files.h"
#include "support/each.h"
#include "support/read_world.h"

namespace lore {
namespace {

const SoapShape kShape = {.fields = {"count", "name"}, .list = "list", .item = "Item", .itemFields = {"id"}};

std::string Envelope(const std::string& body, const std::string& header = {}) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><s:Envelope xmlns:s=\"" + std::string(kEnvelopeNamespace) +
           "\" xmlns:xsi=\"" + kInstanceNamespace + "\">" + header + "<s:Body>" + body + "</s:Body></s:Envelope>";
}

std::string Response(const std::string& result) {
    return Envelope("<DoResponse xmlns=\"urn:x/\">" + result + "</DoResponse>");
}

/// What was read, as one line: "name=value" fields, then "[...]" for each item; "unread" and "no result" otherwise.
std::string Shown(const SoapReply& reply) {
    if (!reply.isRead)
        return "unread";
    if (reply.fault)
        return "fault " + reply.fault->code + "|" + reply.fault->string + "|" + reply.fault->detail;
    if (!reply.result)
        return "no result";
    const auto fields = [](const SoapFields& all) {
        std::string text;
        for (const auto& [name, value] : all)
            text += name + "=" + value + ";";
        return text;
    };
    std::string text = fields(reply.result->fields);
    for (const SoapFields& item : reply.result->items)
        text += "[" + fields(item) + "]";
    return text;
}

std::string Read(const std::string& xml) {
    return Shown(ReadSoapReply(xml, "Do", kShape));
}

TEST(SoapReply, GivesTheKnownFieldsInAnyOrder) {
    const std::pair<std::string, const char*> cases[] = {
        {"<DoResult><name>N</name><count>7</count></DoResult>", "count=7;name=N;"},
        {"<DoResult><other><name>no</name></other><count>7</count><count2/></DoResult>", "count=7;"},
        {"<DoResult><name>a &amp; &#x3C;b&#x3E; <![CDATA[<c>]]></name></DoResult>", "name=a & <b> <c>;"},
        {"<DoResult><name>a<b>c</b>d</name></DoResult>", "name=ad;"},
        {"<DoResult><name/></DoResult>", "name=;"},
        {"<DoResult><name xsi:nil=\"1\"/><count xsi:nil=\"true\">7</count></DoResult>", ""},
        {"<DoResult><name xsi:nil=\"0\">x</name><count nil=\"1\">7</count></DoResult>", "count=7;name=x;"},
        {"<DoResult><list><Item><id>1</id><name>no</name></Item><No><id>2</id></No><Item/></list></DoResult>",
         "[id=1;][]"},
        {"<DoResult><list><Item xsi:nil=\"1\"><id>1</id></Item><Item><id>2</id></Item></list></DoResult>", "[id=2;]"},
        {"<DoResult><list xsi:nil=\"1\"><Item/></list><list/></DoResult>", ""},
        {"<DoResult xsi:nil=\"1\"><name>x</name><list><Item><id>1</id></Item></list></DoResult>", "no result"},
        {"", "no result"},
        {"<Do2Result><name>x</name></Do2Result>", "no result"},
        {"<!-- <DoResult> --><?pi?><DoResult><!--x--><name>x<!--y-->z</name></DoResult>", "name=xz;"},
    };
    for (const auto& [result, shown] : cases)
        EXPECT_EQ(Read(Response(result)), shown) << result;
}

TEST(SoapReply, FindsTheEnvelopeByItsNamespaceAndSkipsTheHeader) {
    const std::string response = "<DoResponse><DoResult><name>x</name></DoResult></DoResponse>";
    const std::string unnamed = "><Body>" + response + "</Body></Envelope>";
    const std::pair<std::string, const char*> cases[] = {
        {Envelope(response, "<s:Header><s:Body>" + response + "</s:Body></s:Header>"), "name=x;"},
        {"<e:Envelope xmlns:e=\"http://www.w3.org/2003/05/soap-envelope\"><e:Body>" + response +
             "</e:Body></e:Envelope>",
         "unread"},
        {"<Envelope" + unnamed, "unread"},
        {"<Envelope xmlns=\"" + std::string(kEnvelopeNamespace) + "\"" + unnamed, "name=x;"},
        {Envelope("<OtherResponse/>"), "unread"},
        {Envelope("<s:Fault><faultcode>s:Server</faultcode><faultstring>It broke</faultstring>"
                  "<detail><a>one</a><b>two</b></detail></s:Fault>"),
         "fault s:Server|It broke|onetwo"},
        {Envelope("<s:Fault/>"), "fault ||"}};
    for (const auto& [xml, shown] : cases)
        EXPECT_EQ(Read(xml), shown) << xml;
}

TEST(SoapReply, GivesTheTextOfAResultWithoutFieldsInTheBytesOfTheCore) {
    const auto text = [](const char* result) { return ReadSoapReply(Response(result), "Do", {}).result.value().text; };
    EXPECT_EQ(text("<DoResult> \xC3\xA9 </DoResult>"), " \xE9 ");
    EXPECT_EQ(text("<DoResult>&#x4E2D;</DoResult>"), "\xE4\xB8\xAD");
    EXPECT_EQ(Read(Response("<DoResult> \x1A</DoResult>")), "unread") << "a control character is no XML";
}

TEST(SoapReply, LeavesWhatIsNoReplyUnread) {
    const std::string whole = Response("<DoResult><name>x</name></DoResult>");
    for (const std::string& xml : {std::string("<html><body>Down for maintenance</body></html>"),
                                   std::string("\xFF\xFE\x00\x01garbage", 11), whole + "<more/>"})
        EXPECT_EQ(Read(xml), "unread") << xml;
    for (size_t cut = 0; cut < whole.size(); ++cut)
        EXPECT_EQ(Read(whole.substr(0, cut)), "unread") << cut;
}

TEST(SoapReply, RefusesADocumentType) {
    const std::string response = Response("<DoResult><name>&a;</name></DoResult>");
    const size_t end = response.find("?>") + 2;
    for (const char* const type :
         {"<!DOCTYPE x [<!ENTITY a \"b\">]>", "<!DOCTYPE x [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>",
          "<!DOCTYPE x SYSTEM \"http://127.0.0.1:1/x.dtd\">"})
        EXPECT_EQ(Read(response.substr(0, end) + type + response.substr(end)), "unread") << type;
    EXPECT_EQ(Read(response), "unread") << "an entity that nobody has defined";
}

TEST(SoapReply, ReadsAThousandLevelsAndNoMore) {
    constexpr size_t kAround = 4;  // Envelope, Body, DoResponse, DoResult
    const auto deep = [](size_t levels) {
        const auto times = static_cast<int>(levels);
        return Response("<DoResult>" + Repeated("<a>", times) + Repeated("</a>", times) + "<name>x</name></DoResult>");
    };
    EXPECT_EQ(Read(deep(kDeepestReply - kAround)), "name=x;");
    EXPECT_EQ(Read(deep(kDeepestReply - kAround + 1)), "unread");
    EXPECT_EQ(Read(deep(1'000'000)), "unread");
}

TEST(SoapReply, ReadsALargeReplyInOneGo) {
    std::string items;
    for (int i = 0; i < 200'000; ++i)
        items += "<Item><id>" + std::to_string(i) + "</id></Item>";
    const SoapReply reply = ReadSoapReply(Response("<DoResult><list>" + items + "</list></DoResult>"), "Do", kShape);
    ASSERT_TRUE(reply.result);
    ASSERT_EQ(reply.result->items.size(), 200'000u);
    EXPECT_EQ(reply.result->items.back().at("id"), "199999");
}

TEST(SoapReply, IsReadWithoutHarmWhateverTheCorpusHolds) {
    size_t count = 0, read = 0;
    for (const auto& path : CorpusFiles(LORE_TEST_DATA, "soap")) {
        read += ReadSoapReply(BytesOf(path), "Do", kShape).isRead;
        ++count;
    }
    EXPECT_GE(count, 8u);
    EXPECT_GE(read, 4u);
}

TEST(SoapEnvelope, EscapesTextsAndRefusesWhatXmlCannotHold) {
    const auto body = [](const std::string& text) {
        const auto xml = SoapEnvelope("Do", "urn:x/", {{"a", std::optional(text)}});
        if (!xml)
            return std::string("none");
        const size_t begin = xml->find("<a>") + 3;
        return xml->substr(begin, xml->find("</a>") - begin);
    };
    EXPECT_EQ(body("<a href=\"x\">&'\r\n\t"), "&lt;a href=&quot;x&quot;&gt;&amp;'&#13;\n\t");
    EXPECT_EQ(body("caf\xE9"), "caf\xC3\xA9");
    EXPECT_EQ(body("\xE4\xB8\xAD"), "\xE4\xB8\xAD");
    EXPECT_EQ(body(std::string("a\0b", 3)), "none");
    EXPECT_EQ(body("a\x0B"), "none");
    EXPECT_EQ(body("\xEF\xBF\xBF"), "none");
}

}  // namespace
}  // namespace lore
