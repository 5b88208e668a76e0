#include "ui/text_layout.h"

#include <doctest/doctest.h>

using namespace zo::ui;

TEST_CASE("a link stays in one row when it fits") {
    const struct {
        int width;
        std::string_view rows;  // a bar between two
    } cases[] = {
        {18, "It is on page 3.4,|or not"},
        {17, "It is on|page 3.4, or not"},
        {7, "It is|on page|3.4, or|not"},  // too long for a row, it breaks like any words
    };
    for (const auto& c : cases) {
        CAPTURE(c.width);
        Paragraph paragraph = {.text = "It is on page 3.4, or not"};
        paragraph.links = {{.from = 9, .to = 17}};
        TextLayout layout;
        layout.Set({paragraph});
        layout.Break(c.width);
        std::string rows;
        for (const TextLayout::Row& row : layout.Rows()) {
            rows += (rows.empty() ? "" : "|") +
                    paragraph.text.substr(row.at.from, row.at.to - row.at.from);
        }
        CHECK(rows == c.rows);
    }
}
