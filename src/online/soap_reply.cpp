#include "online/soap_reply.h"

#include <algorithm>
#include <libxml/parser.h>
#include <memory>
#include <utility>

#include "base/text.h"
#include "base/xml_callbacks.h"
#include "online/soap_envelope.h"

namespace lore {

namespace {

/// The attributes of an element as the reader hands them out: name, prefix, namespace, begin and end of the value.
class Attributes {
public:
    Attributes(const xmlChar** list, int count) : list_(list), count_(count) {}
    bool IsNil() const {
        for (int i = 0; i < count_; ++i) {
            const xmlChar** const parts = list_ + ptrdiff_t{5} * i;
            const std::string_view value(reinterpret_cast<const char*>(parts[3]),
                                         static_cast<size_t>(parts[4] - parts[3]));
            if (View(parts[0]) == "nil" && View(parts[2]) == kInstanceNamespace)
                return value == "1" || value == "true";
        }
        return false;
    }

private:
    const xmlChar** list_;
    int count_;
};

/// Where in a reply an element stands.
enum class Place { Outside, Envelope, Body, Response, Result, Field, List, Item, ItemField, Fault, FaultPart, Skipped };

bool HoldsText(Place place) {
    return place == Place::Result || place == Place::Field || place == Place::ItemField || place == Place::FaultPart;
}

class ReplyReader {
public:
    ReplyReader(std::string_view operation, const SoapShape& shape)
        : response_(std::string(operation) + "Response"), result_(std::string(operation) + "Result"), shape_(shape) {}

    void Start(std::string_view name, std::string_view nameSpace, const Attributes& attributes);
    void End(std::string_view name);
    void Characters(std::string_view text) {
        if (!places_.empty() && HoldsText(places_.back()))
            text_ += text;
    }
    bool IsRefused() const { return isRefused_; }
    void Refuse() { isRefused_ = true; }
    SoapReply Finish(bool wellFormed);

private:
    Place Here() const { return places_.empty() ? Place::Outside : places_.back(); }
    Place PlaceOf(std::string_view name, std::string_view nameSpace) const;
    void Enter(Place place, bool isNil);
    std::string TakeText() { return CleanText(FromUtf8(std::exchange(text_, {}))); }
    void KeepFaultPart(std::string_view name);

    std::string response_, result_;
    const SoapShape& shape_;
    std::vector<Place> places_;
    std::string text_;
    bool isNil_ = false;  // the field or result that is open
    bool hasResponse_ = false, isRefused_ = false;
    SoapReply reply_;
};

bool Holds(const std::vector<std::string_view>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

Place ReplyReader::PlaceOf(std::string_view name, std::string_view nameSpace) const {
    const bool ofEnvelope = nameSpace == kEnvelopeNamespace;
    switch (Here()) {
        case Place::Outside:
            return ofEnvelope && name == "Envelope" ? Place::Envelope : Place::Skipped;
        case Place::Envelope:
            return ofEnvelope && name == "Body" ? Place::Body : Place::Skipped;
        case Place::Body:
            if (ofEnvelope && name == "Fault")
                return Place::Fault;
            return name == response_ && !hasResponse_ ? Place::Response : Place::Skipped;
        case Place::Response:
            return name == result_ ? Place::Result : Place::Skipped;
        case Place::Result:
            if (!shape_.list.empty() && name == shape_.list)
                return Place::List;
            return Holds(shape_.fields, name) ? Place::Field : Place::Skipped;
        case Place::List:
            return name == shape_.item ? Place::Item : Place::Skipped;
        case Place::Item:
            return Holds(shape_.itemFields, name) ? Place::ItemField : Place::Skipped;
        case Place::Fault:
        case Place::FaultPart:
            return Place::FaultPart;
        default:
            return Place::Skipped;
    }
}

void ReplyReader::Enter(Place place, bool isNil) {
    switch (place) {
        case Place::Response:
            hasResponse_ = true;
            break;
        case Place::Result:
            if (!isNil)
                reply_.result.emplace();
            break;
        case Place::Item:
            if (reply_.result && !isNil)
                reply_.result->items.emplace_back();
            break;
        case Place::Fault:
            reply_.fault.emplace();
            break;
        default:
            break;
    }
}

void ReplyReader::Start(std::string_view name, std::string_view nameSpace, const Attributes& attributes) {
    if (places_.size() >= kDeepestReply) {
        Refuse();
        return;
    }
    const Place here = Here();
    Place place = PlaceOf(name, nameSpace);
    const bool isNil = attributes.IsNil();
    // What stands in a nil element means nothing.
    if (isNil && (place == Place::Item || place == Place::List))
        place = Place::Skipped;
    if (HoldsText(place) && here != Place::FaultPart) {
        text_.clear();
        isNil_ = isNil;
    }
    Enter(place, isNil);
    places_.push_back(place);
}

void ReplyReader::KeepFaultPart(std::string_view name) {
    const std::pair<std::string_view, std::string SoapFault::*> parts[] = {
        {"faultcode", &SoapFault::code}, {"faultstring", &SoapFault::string}, {"detail", &SoapFault::detail}};
    for (const auto& [part, field] : parts) {
        if (part == name)
            (*reply_.fault).*field = TakeText();
    }
}

void ReplyReader::End(std::string_view name) {
    if (places_.empty())
        return;
    const Place place = places_.back();
    places_.pop_back();
    if (place == Place::FaultPart && Here() == Place::Fault)
        KeepFaultPart(name);
    if (!reply_.result)
        return;
    SoapResult& result = *reply_.result;
    if (place == Place::Result && shape_.fields.empty())
        result.text = TakeText();
    else if (place == Place::Field && !isNil_)
        result.fields[std::string(name)] = TakeText();
    else if (place == Place::ItemField && !isNil_)
        result.items.back()[std::string(name)] = TakeText();
}

SoapReply ReplyReader::Finish(bool wellFormed) {
    if (!wellFormed || isRefused_ || !(hasResponse_ || reply_.fault))
        return {};
    reply_.isRead = true;
    return std::move(reply_);
}

using Reading = GuardedReader<ReplyReader>;

template <typename Call>
void Guard(void* context, Call call) {
    auto* const parser = static_cast<xmlParserCtxtPtr>(context);
    auto& reading = *static_cast<Reading*>(parser->_private);
    reading.Guard([&](ReplyReader& reader) {
        call(reader);
        if (reader.IsRefused())
            xmlStopParser(parser);
    });
    if (reading.HasThrown())
        xmlStopParser(parser);
}

void OnStart(void* context, const xmlChar* name, const xmlChar*, const xmlChar* nameSpace, int, const xmlChar**,
             int count, int, const xmlChar** attributes) {
    Guard(context,
          [&](ReplyReader& reader) { reader.Start(View(name), View(nameSpace), Attributes(attributes, count)); });
}

void OnEnd(void* context, const xmlChar* name, const xmlChar*, const xmlChar*) {
    Guard(context, [&](ReplyReader& reader) { reader.End(View(name)); });
}

void OnCharacters(void* context, const xmlChar* text, int length) {
    Guard(context, [&](ReplyReader& reader) { reader.Characters(View(text, length)); });
}

/// A document type could define what blows up a reply.
void OnDocumentType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    Guard(context, [](ReplyReader& reader) { reader.Refuse(); });
}

struct FreeContext {
    void operator()(xmlParserCtxtPtr context) const { xmlFreeParserCtxt(context); }
};

}  // namespace

SoapReply ReadSoapReply(std::string_view xml, std::string_view operation, const SoapShape& shape) {
    ReplyReader reader(operation, shape);
    Reading reading(reader);
    xmlSAXHandler handler = {};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = OnStart;
    handler.endElementNs = OnEnd;
    handler.characters = handler.cdataBlock = handler.ignorableWhitespace = OnCharacters;
    handler.internalSubset = OnDocumentType;
    const std::unique_ptr<xmlParserCtxt, FreeContext> context(
        xmlCreatePushParserCtxt(&handler, nullptr, nullptr, 0, nullptr));
    if (!context)
        return {};
    context->_private = &reading;
    // The depth is counted here; the reader's own bounds are meant for other documents.
    xmlCtxtUseOptions(context.get(), XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET | XML_PARSE_HUGE);
    constexpr size_t kPiece = size_t{1} << 20;
    for (size_t at = 0; at < xml.size() && !reader.IsRefused() && !reading.HasThrown(); at += kPiece)
        xmlParseChunk(context.get(), xml.data() + at, static_cast<int>(std::min(kPiece, xml.size() - at)), 0);
    xmlParseChunk(context.get(), nullptr, 0, 1);
    reading.ThrowOn();
    return reader.Finish(context->wellFormed != 0);
}

}  // namespace lore
