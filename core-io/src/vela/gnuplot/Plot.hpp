#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <vela/gnuplot/details/append.hpp>
#include <vela/gnuplot/details/create_dataset_name.hpp>

namespace vela::gnuplot {

/// One plot of a gnuplot file: datasets of rows, and the command that draws them.
///
/// Rows gather in memory; when the plot ends, its whole text goes to the stream in one write, so
/// that plots of one file never mix.
///
///     $dataset_0_0 << EOD                               each dataset
///     0 -83.7011 -90.6802                                 its rows
///     EOD
///     set title TITLE                                   if there is a title
///     set label 1 "TEXT" at screen X, screen Y          if there is a label
///     set term wxt size WIDTH, HEIGHT                   if there is a size
///     set key autotitle columnheader                    for a dataset with a header
///     plot $dataset_0_0 using 1:2 with lines, ...
///     pause mouse
///
/// `Stream` takes text through `write(std::string_view)` and must outlive the plot.  Used by one
/// thread at a time.
template <typename Stream>
class Plot {
public:
    /// A text at a place on the screen; x and y run from 0 to 1, from the lower left corner.
    struct Label {
        std::string text;
        float x = 0;
        float y = 0;
    };

    /// One dataset.
    struct DataInfo {
        std::string* buffer = nullptr;
        std::string name;
        /// What stands behind "with": "lines", "points", "circles" and what gnuplot takes besides.
        /// Circles are drawn from columns 1:2 or 1:2:3; any other style draws each column from the
        /// second on over the first.
        std::string style = "lines";
        /// Of the widest row, the header included.
        std::size_t nr_columns = 0;
        /// The header counts as a row.
        std::size_t nr_rows = 0;
        bool has_header = false;
    };

    class Row;

    /// Datasets in the order of their making; rows go to the last one.
    std::list<DataInfo> datas;
    /// Written as it stands, with whatever quotes gnuplot needs.  An empty text still writes its
    /// line, which clears the title that an earlier plot of the file has set.
    std::optional<std::string> title;
    std::optional<Label> label;
    /// Width and height of the window in pixels.
    std::optional<std::pair<std::int32_t, std::int32_t>> size;

    /// `index` tells the plots of one file apart; `pause` is what gnuplot waits for before it goes
    /// on.  The first dataset is there at once.
    Plot(Stream& stream, std::size_t index, std::string pause)
        : stream_(&stream), index_(index), pause_(std::move(pause)) {
        open_data_();
    }

    /// The source writes nothing when it ends, and takes no more rows.
    Plot(Plot&& other) noexcept
        : datas(std::move(other.datas)),
          title(std::move(other.title)),
          label(std::move(other.label)),
          size(std::move(other.size)),
          stream_(other.stream_),
          buffer_(std::move(other.buffer_)),
          index_(other.index_),
          pause_(std::move(other.pause_)) {
        other.moved_ = true;
    }

    Plot& operator=(Plot&&) = delete;

    ~Plot() {
        if (moved_) return;
        end_data_();
        append_settings_();
        append_command_();
        *buffer_ += "pause " + pause_ + "\n";
        stream_->write(*buffer_);
    }

    /// Closes the dataset in work and begins the next one.
    DataInfo& new_data() {
        end_data_();
        return open_data_();
    }

    void add_row(std::int32_t a, double b) { Row(datas.back()) << a << b; }
    void add_row(std::int32_t a, std::int32_t b) { Row(datas.back()) << a << b; }
    /// No values make an empty row, at which gnuplot lifts the pen.
    void add_row(const std::vector<double>& values) { add_values_(values); }

    /// Names of the columns, as the first row.  False, with nothing written, if the dataset has a
    /// header or any row.
    [[nodiscard]] bool add_header(const std::vector<std::string>& names) {
        DataInfo& data = datas.back();
        if (data.has_header || data.nr_rows > 0) return false;
        add_values_(names);
        data.has_header = true;
        return true;
    }

private:
    template <typename Values>
    void add_values_(const Values& values) {
        Row row(datas.back());
        for (const auto& value : values)
            row << value;
    }

    DataInfo& open_data_() {
        const auto name = details::create_dataset_name(index_, datas.size());
        *buffer_ += name + " << EOD\n";
        return datas.emplace_back(DataInfo{.buffer = buffer_.get(), .name = name});
    }

    void end_data_() { *buffer_ += "EOD\n"; }

    void append_settings_() {
        if (title) *buffer_ += "set title " + *title + "\n";
        if (label) {
            *buffer_ += "set label 1 ";
            details::append(*buffer_, label->text);
            append_pair_(" at screen ", label->x, ", screen ", label->y);
        }
        if (size) append_pair_("set term wxt size ", size->first, ", ", size->second);
    }

    template <typename T>
    void append_pair_(std::string_view before, T a, std::string_view between, T b) {
        *buffer_ += before;
        details::append(*buffer_, a);
        *buffer_ += between;
        details::append(*buffer_, b);
        *buffer_ += '\n';
    }

    // The header line stands where the walk has got to: inside the command for a later dataset.
    void append_command_() {
        bool first = true;
        for (const DataInfo& data : datas) {
            if (data.has_header) *buffer_ += "set key autotitle columnheader\n";
            append_clauses_(data, first);
        }
        *buffer_ += '\n';
    }

    void append_clauses_(const DataInfo& data, bool& first) {
        if (!data.style.starts_with("circles")) {
            for (std::size_t column = 2; column <= data.nr_columns; ++column)
                append_clause_(data, "1:" + std::to_string(column), first);
        } else if (data.nr_columns == 2) {
            append_clause_(data, "1:2", first);
        } else if (data.nr_columns == 3) {
            append_clause_(data, "1:2:3", first);
        }
    }

    void append_clause_(const DataInfo& data, const std::string& columns, bool& first) {
        *buffer_ += first ? "plot " : ", ";
        *buffer_ += data.name + " using " + columns + " with " + data.style;
        first = false;
    }

    bool moved_ = false;
    Stream* stream_;
    // On the heap, so that the datasets find it at the same address when the plot moves.
    std::unique_ptr<std::string> buffer_ = std::make_unique<std::string>();
    std::size_t index_;
    std::string pause_;
};

/// A row being written: each value goes to the buffer at once; the end of the row closes it.
template <typename Stream>
class Plot<Stream>::Row {
public:
    explicit Row(DataInfo& data) : data_(&data) {}
    /// The source no longer closes the row.
    Row(Row&& other) noexcept
        : data_(other.data_),
          first_(other.first_),
          nr_columns_(other.nr_columns_),
          moved_(std::exchange(other.moved_, true)) {}
    Row& operator=(Row&&) = delete;

    ~Row() {
        if (moved_) return;
        *data_->buffer += '\n';
        data_->nr_columns = std::max(data_->nr_columns, nr_columns_);
        ++data_->nr_rows;
    }

    /// A 32-bit integer, a real, or a text, which goes in quotes.
    template <typename T>
    Row& operator<<(const T& value) {
        if (!first_) *data_->buffer += ' ';
        details::append(*data_->buffer, value);
        first_ = false;
        ++nr_columns_;
        return *this;
    }

private:
    DataInfo* data_;
    bool first_ = true;
    std::size_t nr_columns_ = 0;
    bool moved_ = false;
};

}  // namespace vela::gnuplot
