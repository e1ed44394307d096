#include "dwg/drawing_writer.h"

#include "db/entities/reference_lists.h"
#include "dwg/block_chains.h"
#include "dwg/container_r2000.h"
#include "dwg/file_error.h"
#include "dwg/object_encoder.h"
#include "dwg/object_map.h"
#include "dwg/raw_fields.h"
#include "dwg/root_variables.h"
#include "platform/text.h"
#include "rxclass.h"

#include <algorithm>
#include <deque>

namespace embedded::dwg {
namespace {

// The same bits: products leave what they like in the last byte behind the last handle.
bool sameObject(ByteSpan filed, const ObjectParts& parts, const Bytes& made) {
    if (filed.size != made.size() || made.empty())
        return false;
    const std::size_t whole = made.size() - 1;
    const std::uint8_t filling =
        static_cast<std::uint8_t>(0xFF >> (8 - (filed.size * 8 - endOfHandles(filed, parts))));
    return std::equal(made.begin(), made.begin() + static_cast<std::ptrdiff_t>(whole), filed.begin()) &&
           ((filed[whole] ^ made[whole]) & ~filling) == 0;
}

class Writer {
public:
    Writer(DatabaseCore& core, FileFrame& frame)
        : m_core(core), m_frame(frame), m_encoder(core, frame), m_chains(core, frame), m_parts(frame.parts) {
        m_parts.objects.clear();
    }

    Acad::ErrorStatus write(Bytes& file, std::string& error) {
        Acad::ErrorStatus es = Acad::eOk;
        m_core.stubs().forEach([&](AcDbStub& stub) {
            if (es == Acad::eOk && exists(stub))
                es = add(stub, error);
        });
        if (es != Acad::eOk)
            return es;
        writeRoots(m_core, m_frame);
        const Bytes variables = m_frame.variables.write();
        const Bytes classes = m_frame.classes.write();
        m_parts.headerVariables = variables;
        m_parts.classes = classes;
        file = writeContainerR2000(m_parts, order(), rootHandles(m_frame.variables));
        return Acad::eOk;
    }

private:
    static bool exists(const AcDbStub& stub) {
        return !stub.has(kErased | kPermanentlyErased) &&
               (stub.object != nullptr || stub.fileIndex != kNoFileIndex);
    }

    Acad::ErrorStatus add(AcDbStub& stub, std::string& error) {
        const bool filed = stub.fileIndex != kNoFileIndex;
        ObjectSlot slot = filed ? m_frame.parts.objects[stub.fileIndex] : ObjectSlot();
        slot.handle = stub.handle;
        const EntityLinks* links = m_chains.find(stub);
        if (!filed || stub.has(kDirty) || m_chains.hasNewEnds(stub)) {
            const Acad::ErrorStatus es = encode(stub, links, slot, error);
            if (es != Acad::eOk)
                return es;
        } else if (links != nullptr) {
            relink(*links, slot);
        }
        if (!filed)
            slot.offset = 0;
        m_parts.objects.push_back(slot);
        return Acad::eOk;
    }

    bool partsOf(const ObjectSlot& slot, ObjectParts& parts) {
        const ObjectKind* kind = m_frame.kinds.find(typeOf(slot.body));
        std::string why;
        return kind != nullptr && readEnvelope(slot.body, kind->isEntity, parts, why);
    }

    void replace(ObjectSlot& slot, Bytes made) {
        ObjectParts parts;
        if (!slot.body.empty() && partsOf(slot, parts) && sameObject(slot.body, parts, made))
            return;
        m_made.push_back(std::move(made));
        slot.body = m_made.back();
        slot.sum = objectSum(slot.body);
    }

    Acad::ErrorStatus encode(AcDbStub& stub, const EntityLinks* links, ObjectSlot& slot, std::string& error) {
        AcDbObject* object = nullptr;
        Acad::ErrorStatus es = m_core.resident(stub, object);
        ObjectParts parts;
        const ObjectEnvelope* filed = !slot.body.empty() && partsOf(slot, parts) ? &parts.envelope : nullptr;
        EntityLinks neighbours;
        if (links != nullptr)
            neighbours = *links;
        else if (filed != nullptr && filed->isEntity)
            neighbours = linksOf(*filed);
        Bytes made;
        std::string reason = "it cannot be read";
        if (es == Acad::eOk) {
            es = m_encoder.encode(stub, filed, neighbours, made);
            reason = m_encoder.reason();
        }
        if (es == Acad::eOk) {
            replace(slot, std::move(made));
            return es;
        }
        const std::wstring kind = object != nullptr ? object->isA()->name() : L"unknown";
        error = "object " + hexText(stub.handle) + " (" + platform::toUtf8(kind) + "): " + reason;
        return es;
    }

    void relink(const EntityLinks& links, ObjectSlot& slot) {
        ObjectParts parts;
        if (partsOf(slot, parts) && !(linksOf(parts.envelope) == links))
            replace(slot, m_encoder.relink(slot, parts, links));
    }

    // As in the file that was read; what is new stands behind, by handle.
    std::vector<std::size_t> order() const {
        std::vector<std::size_t> indexes(m_parts.objects.size());
        for (std::size_t i = 0; i < indexes.size(); ++i)
            indexes[i] = i;
        std::stable_sort(indexes.begin(), indexes.end(), [this](std::size_t a, std::size_t b) {
            const std::uint32_t first = m_parts.objects[a].offset;
            const std::uint32_t second = m_parts.objects[b].offset;
            return first != 0 && (second == 0 || first < second);
        });
        return indexes;
    }

    DatabaseCore& m_core;
    FileFrame& m_frame;
    ObjectEncoder m_encoder;
    BlockChains m_chains;
    DrawingParts m_parts;
    std::deque<Bytes> m_made;
};

} // namespace

Acad::ErrorStatus writeDrawing(DatabaseCore& core, FileFrame& frame, Bytes& file, std::string& error) {
    try {
        bringReferenceListsUpToDate(core);
        return Writer(core, frame).write(file, error);
    } catch (const FileError& failure) {
        error = failure.what();
        return Acad::eFilerError;
    }
}

} // namespace embedded::dwg
