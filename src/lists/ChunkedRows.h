// A sequence of rows kept in chunks, so that a row in the middle of a long list is inserted or removed in a
// moment.
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <utility>
#include <vector>

namespace varlo {

// Rows are numbered from 0. Insert, RemoveAt and At cost in the order of kChunk plus size / kChunk.
template<typename Row> class ChunkedRows {
public:
    int Size() const { return size_; }

    void Append(Row value) {
        if (chunks_.empty() || chunks_.back().size() >= kChunk) {
            chunks_.emplace_back();
            chunks_.back().reserve(kChunk);
        }
        chunks_.back().push_back(std::move(value));
        ++size_;
    }

    const Row &At(int row) const {
        const auto [chunk, offset] = Locate(row);
        return chunks_[chunk][offset];
    }

    // `row` from 0 to Size(), which appends.
    void Insert(int row, Row value) {
        if (chunks_.empty())
            chunks_.emplace_back();
        const auto [chunk, offset] = Locate(row);
        auto &rows = chunks_[chunk];
        rows.insert(rows.begin() + static_cast<qptrdiff>(offset), std::move(value));
        ++size_;
        if (rows.size() >= 2 * kChunk)
            Split(chunk);
    }

    void RemoveAt(int row) {
        const auto [chunk, offset] = Locate(row);
        auto &rows = chunks_[chunk];
        rows.erase(rows.begin() + static_cast<qptrdiff>(offset));
        if (rows.empty())
            chunks_.erase(chunks_.begin() + static_cast<qptrdiff>(chunk));
        --size_;
    }

    void SetAt(int row, Row value) {
        const auto [chunk, offset] = Locate(row);
        chunks_[chunk][offset] = std::move(value);
    }

    // The first row for which `isBefore(row)` is false; the rows must be ordered so that it is true only at
    // the front.
    template<typename IsBefore> int LowerBound(IsBefore isBefore) const {
        const auto chunk = std::partition_point(chunks_.begin(), chunks_.end(),
                                                [&](const auto &rows) { return isBefore(rows.back()); });
        size_t before = 0;
        for (auto passed = chunks_.begin(); passed != chunk; ++passed)
            before += passed->size();
        if (chunk != chunks_.end())
            before += static_cast<size_t>(std::partition_point(chunk->begin(), chunk->end(), isBefore) -
                                          chunk->begin());
        return static_cast<int>(before);
    }

    template<typename Visit> void ForEach(Visit visit) const {
        for (const auto &rows : chunks_)
            for (const Row &row : rows)
                visit(row);
    }

private:
    static constexpr size_t kChunk = 256;

    // Chunk and offset of a row; the row behind the last one is found behind the last row of the last chunk.
    std::pair<size_t, size_t> Locate(int row) const {
        auto offset = static_cast<size_t>(row);
        size_t chunk = 0;
        while (chunk + 1 < chunks_.size() && offset >= chunks_[chunk].size())
            offset -= chunks_[chunk++].size();
        return {chunk, offset};
    }

    void Split(size_t chunk) {
        auto &rows = chunks_[chunk];
        const auto middle = rows.begin() + static_cast<qptrdiff>(rows.size() / 2);
        std::vector<Row> upper(std::make_move_iterator(middle), std::make_move_iterator(rows.end()));
        rows.erase(middle, rows.end());
        chunks_.insert(chunks_.begin() + static_cast<qptrdiff>(chunk) + 1, std::move(upper));
    }

    std::vector<std::vector<Row>> chunks_;
    int size_ = 0;
};

} // namespace varlo
