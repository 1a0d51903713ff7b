/* Rows of paths as text, CSV and JSON. */
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "base/csv.h"
#include "base/text.h"
#include "model/trees.h"
#include "paths/path_rows.h"

namespace inspect {
namespace {

using Columns = std::vector<const PathColumn *>;

constexpr size_t GAP = 2; /* between columns of text */

void PrintLine(std::string *line)
{
    *line += '\n';
    std::fwrite(line->data(), 1, line->size(), stdout);
    line->clear();
}

/* Nothing is "-", but for the last columns. */
class TextWriter final : public PathWriter {
  public:
    TextWriter(Columns columns, const Paint &paint) : columns_(std::move(columns)), line_(paint) {}

    void Write(const PathRow &row) override
    {
        std::vector<std::string> texts;
        for (const PathColumn *column : columns_)
            texts.push_back(Printable(column->text(row, true)));
        while (!texts.empty() && texts.back().empty())
            texts.pop_back();
        for (size_t i = 0; i < texts.size(); ++i) {
            size_t size = texts[i].empty() ? 1 : Characters(texts[i]);
            line_.Add(texts[i].empty() ? "-" : texts[i], columns_[i]->tone);
            line_.Add(std::string(std::max(columns_[i]->width, size) - size + GAP, ' '));
        }
        line_.Print();
    }

  private:
    Columns columns_;
    PaintedLine line_;
};

class CsvWriter final : public PathWriter {
  public:
    explicit CsvWriter(Columns columns) : columns_(std::move(columns))
    {
        for (const PathColumn *column : columns_)
            line_.append(line_.empty() ? "" : ",").append(column->name);
        PrintLine(&line_);
    }

    void Write(const PathRow &row) override
    {
        for (size_t i = 0; i < columns_.size(); ++i)
            line_.append(i == 0 ? "" : ",").append(CsvField(columns_[i]->text(row, false)));
        PrintLine(&line_);
    }

  private:
    Columns columns_;
    std::string line_;
};

/* One object a line. */
class JsonLinesWriter final : public PathWriter {
  public:
    void Write(const PathRow &row) override
    {
        buffer_.Clear();
        json_.Reset(buffer_);
        json_.StartObject();
        Text("path", row.node->path.c_str());
        Text("module", row.module);
        Text("kind", row.kind);
        Number("class_id", row.node->ClassId());
        Number("sample_id", row.node->SampleId());
        Numbers("self_keys", row.selfKeys);
        Numbers("ancestor_keys", row.ancestorKeys);
        WriteLeaf(row);
        json_.Key("config");
        json_.Bool(row.isConfig);
        Text("status", row.status);
        Text("description", row.description.empty() ? nullptr : row.description.c_str());
        WritePlace(row.where);
        json_.EndObject();
        buffer_.Put('\n');
        std::fwrite(buffer_.GetString(), 1, buffer_.GetSize(), stdout);
    }

  private:
    void Text(const char *name, const char *text)
    {
        json_.Key(name);
        if (text == nullptr)
            json_.Null();
        else
            json_.String(IsAscii(text) ? text : ValidUtf8(text).c_str());
    }

    void Number(const char *name, uint32_t number)
    {
        json_.Key(name);
        json_.Uint(number);
    }

    void Numbers(const char *name, const std::vector<uint32_t> &numbers)
    {
        json_.Key(name);
        json_.StartArray();
        for (uint32_t number : numbers)
            json_.Uint(number);
        json_.EndArray();
    }

    /* Null for what is no leaf. */
    void WriteLeaf(const PathRow &row)
    {
        json_.Key("leaf");
        if (!row.node->IsLeaf())
            return static_cast<void>(json_.Null());
        KorvTreeLeaf leaf = {}; /* where the library has none */
        if (row.node->place.leaf != nullptr)
            leaf = *row.node->place.leaf;
        json_.StartObject();
        Number("field_id", leaf.uiFieldId);
        json_.Key("key");
        json_.Bool(row.isKey);
        Text("type", row.type.written.c_str());
        Text("base_type", row.type.base.c_str());
        Text("limits", row.type.limits.empty() ? nullptr : row.type.limits.c_str());
        WriteNames(row);
        Number("data_type", leaf.uiDataType);
        Number("index_map", leaf.uiName2IdKeyFid);
        Number("reference_key", leaf.uiRefIdKeyFid);
        Text("units", row.units);
        json_.Key("default");
        json_.StartArray();
        for (const std::string &value : row.defaults)
            json_.String(ValidUtf8(value).c_str());
        json_.EndArray();
        json_.EndObject();
    }

    void WriteNames(const PathRow &row)
    {
        json_.Key("enum");
        json_.StartArray();
        if (row.type.names != nullptr)
            for (const diff::NamedNumber &name : row.type.names->names) {
                json_.StartObject();
                Text("name", name.name.c_str());
                json_.Key("value");
                json_.Int64(name.number);
                json_.EndObject();
            }
        json_.EndArray();
    }

    void WritePlace(const diff::Where &where)
    {
        json_.Key("place");
        if (where.file == nullptr)
            return static_cast<void>(json_.Null());
        json_.StartObject();
        Text("file", where.file->c_str());
        Number("line", where.line);
        Number("column", where.column);
        json_.EndObject();
    }

    rapidjson::StringBuffer buffer_;
    rapidjson::Writer<rapidjson::StringBuffer> json_{buffer_};
};

} // namespace

std::unique_ptr<PathWriter> NewTextWriter(Columns columns, const Paint &paint)
{
    return std::make_unique<TextWriter>(std::move(columns), paint);
}

std::unique_ptr<PathWriter> NewCsvWriter(Columns columns)
{
    return std::make_unique<CsvWriter>(std::move(columns));
}

std::unique_ptr<PathWriter> NewJsonLinesWriter()
{
    return std::make_unique<JsonLinesWriter>();
}

} // namespace inspect
