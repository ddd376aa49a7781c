#include "ObjectModel/PathData.h"

#include "ObjectModel/MarkupNumbers.h"

#include <algorithm>

namespace OvPlatform {

namespace {

constexpr bool IsArc(XPS_SEGMENT_TYPE type) noexcept {
    return type <= XPS_SEGMENT_TYPE_ARC_SMALL_COUNTERCLOCKWISE;
}

constexpr XPS_SEGMENT_TYPE ArcType(bool isLarge, bool isClockwise) noexcept {
    if (isLarge)
        return isClockwise ? XPS_SEGMENT_TYPE_ARC_LARGE_CLOCKWISE
                           : XPS_SEGMENT_TYPE_ARC_LARGE_COUNTERCLOCKWISE;
    return isClockwise ? XPS_SEGMENT_TYPE_ARC_SMALL_CLOCKWISE : XPS_SEGMENT_TYPE_ARC_SMALL_COUNTERCLOCKWISE;
}

// Reads the short form: commands, in capitals for absolute places, each for any count of its numbers.
class PathDataReader {
public:
    explicit PathDataReader(std::string_view text) noexcept : m_numbers(text) {}

    bool Read(PathData& path) {
        bool isFirst = true;
        while (!m_numbers.IsAtEnd()) {
            const char command = m_numbers.NextLetter();
            if (command == 0) return false;
            if (command == 'F' && isFirst) {
                if (!ReadFillRule(path.fillRule)) return false;
            } else if (!ReadCommand(path, command)) {
                return false;
            }
            isFirst = false;
        }
        return true;
    }

private:
    bool ReadFillRule(XPS_FILL_RULE& rule) {
        FLOAT number = 0;
        if (!m_numbers.Next(number) || (number != 0 && number != 1)) return false;
        rule = number == 0 ? XPS_FILL_RULE_EVENODD : XPS_FILL_RULE_NONZERO;
        return true;
    }

    bool ReadCommand(PathData& path, char letter) {
        const bool isRelative = letter >= 'a';
        const char command = static_cast<char>(isRelative ? letter - ('a' - 'A') : letter);
        m_base = isRelative ? m_current : XPS_POINT{};
        if (command == 'M') return Begin(path, isRelative);
        if (path.figures.empty()) return false;
        FigureData& figure = path.figures.back();
        if (command == 'Z') {
            figure.isClosed = true;
            m_current = figure.start;
            m_isEnded = true;
            m_isSmooth = false;
            return true;
        }
        // Behind a closed figure the next begins where that began.
        if (m_isEnded) path.figures.emplace_back().start = m_current;
        m_isEnded = false;
        std::size_t count = 0;
        for (; ReadSegment(path.figures.back(), command); ++count)
            m_base = isRelative ? m_current : XPS_POINT{};
        return count != 0 && !m_isBroken;
    }

    bool Begin(PathData& path, bool isRelative) {
        FLOAT x = 0;
        FLOAT y = 0;
        if (!m_numbers.Next(x) || !m_numbers.Next(y)) return false;
        m_current = {m_base.x + x, m_base.y + y};
        path.figures.emplace_back().start = m_current;
        m_isEnded = false;
        m_isSmooth = false;
        // More places behind the first are lines.
        for (;;) {
            m_base = isRelative ? m_current : XPS_POINT{};
            if (!ReadSegment(path.figures.back(), 'L')) return !m_isBroken;
        }
    }

    // False where no more numbers of the command follow. m_isBroken where not all of them do.
    bool ReadSegment(FigureData& figure, char command) {
        FLOAT first = 0;
        if (!m_numbers.Next(first)) return false;
        switch (command) {
        case 'H':
            return Line(figure, {m_base.x + first, m_current.y});
        case 'V':
            return Line(figure, {m_current.x, m_base.y + first});
        case 'L':
            return ReadPoints(figure, first, 1, XPS_SEGMENT_TYPE_LINE);
        case 'Q':
            return ReadPoints(figure, first, 2, XPS_SEGMENT_TYPE_QUADRATIC_BEZIER);
        case 'C':
            return ReadPoints(figure, first, 3, XPS_SEGMENT_TYPE_BEZIER);
        case 'S':
            return ReadSmooth(figure, first);
        case 'A':
            return ReadArc(figure, first);
        default:
            return Break();
        }
    }

    bool Break() noexcept {
        m_isBroken = true;
        return false;
    }

    bool Line(FigureData& figure, XPS_POINT to) {
        figure.Add(XPS_SEGMENT_TYPE_LINE, {to.x, to.y});
        m_current = to;
        m_isSmooth = false;
        return true;
    }

    bool ReadRest(std::vector<FLOAT>& points) {
        for (std::size_t index = 1; index < points.size(); ++index)
            if (!m_numbers.Next(points[index])) return Break();
        for (std::size_t index = 0; index < points.size(); ++index)
            points[index] += index % 2 == 0 ? m_base.x : m_base.y;
        return true;
    }

    bool ReadPoints(FigureData& figure, FLOAT first, std::size_t count, XPS_SEGMENT_TYPE type) {
        std::vector<FLOAT> points(2 * count);
        points[0] = first;
        if (!ReadRest(points)) return false;
        Append(figure, type, points);
        return true;
    }

    bool ReadSmooth(FigureData& figure, FLOAT first) {
        std::vector<FLOAT> points(4);
        points[0] = first;
        if (!ReadRest(points)) return false;
        // The control point that the curve before ended with, reflected.
        const XPS_POINT control =
            m_isSmooth ? XPS_POINT{2 * m_current.x - m_control.x, 2 * m_current.y - m_control.y} : m_current;
        points.insert(points.begin(), {control.x, control.y});
        Append(figure, XPS_SEGMENT_TYPE_BEZIER, points);
        return true;
    }

    bool ReadArc(FigureData& figure, FLOAT radiusX) {
        FLOAT n[6];
        for (FLOAT& number : n)
            if (!m_numbers.Next(number)) return Break();
        const XPS_POINT end{m_base.x + n[4], m_base.y + n[5]};
        figure.Add(ArcType(n[2] != 0, n[3] != 0), {end.x, end.y, radiusX, n[0], n[1]});
        m_current = end;
        m_isSmooth = false;
        return true;
    }

    void Append(FigureData& figure, XPS_SEGMENT_TYPE type, const std::vector<FLOAT>& points) {
        figure.Add(type, points);
        const std::size_t size = points.size();
        m_isSmooth = type == XPS_SEGMENT_TYPE_BEZIER;
        if (m_isSmooth) m_control = {points[size - 4], points[size - 3]};
        m_current = {points[size - 2], points[size - 1]};
    }

    NumberReader m_numbers;
    XPS_POINT m_current{};
    XPS_POINT m_base{};
    XPS_POINT m_control{};
    bool m_isSmooth = false;
    bool m_isEnded = false;
    bool m_isBroken = false;
};

void AppendPoint(std::string& text, FLOAT x, FLOAT y) {
    AppendNumber(text, x);
    text += ',';
    AppendNumber(text, y);
}

char LetterOf(XPS_SEGMENT_TYPE type) noexcept {
    switch (type) {
    case XPS_SEGMENT_TYPE_LINE:
        return 'L';
    case XPS_SEGMENT_TYPE_QUADRATIC_BEZIER:
        return 'Q';
    case XPS_SEGMENT_TYPE_BEZIER:
        return 'C';
    default:
        return 'A';
    }
}

void AppendArc(std::string& text, XPS_SEGMENT_TYPE type, const FLOAT* data) {
    const bool isLarge =
        type == XPS_SEGMENT_TYPE_ARC_LARGE_CLOCKWISE || type == XPS_SEGMENT_TYPE_ARC_LARGE_COUNTERCLOCKWISE;
    const bool isClockwise =
        type == XPS_SEGMENT_TYPE_ARC_LARGE_CLOCKWISE || type == XPS_SEGMENT_TYPE_ARC_SMALL_CLOCKWISE;
    AppendPoint(text, data[2], data[3]);
    text += ' ';
    AppendNumber(text, data[4]);
    text += isLarge ? " 1" : " 0";
    text += isClockwise ? " 1 " : " 0 ";
    AppendPoint(text, data[0], data[1]);
}

} // namespace

void FigureData::Add(XPS_SEGMENT_TYPE type, const std::vector<FLOAT>& numbers, bool isStroked) {
    types.push_back(type);
    data.insert(data.end(), numbers.begin(), numbers.end());
    strokes.push_back(isStroked);
}

std::size_t NumbersOf(XPS_SEGMENT_TYPE type) noexcept {
    if (type < XPS_SEGMENT_TYPE_ARC_LARGE_CLOCKWISE || type > XPS_SEGMENT_TYPE_QUADRATIC_BEZIER) return 0;
    if (IsArc(type)) return 5;
    return type == XPS_SEGMENT_TYPE_BEZIER ? 6 : type == XPS_SEGMENT_TYPE_LINE ? 2 : 4;
}

std::optional<PathData> ParsePathData(std::string_view text) {
    PathData path;
    return PathDataReader(text).Read(path) ? std::optional(std::move(path)) : std::nullopt;
}

bool HasShortForm(const std::vector<FigureData>& figures) noexcept {
    return std::all_of(figures.begin(), figures.end(), [](const FigureData& figure) {
        return figure.isFilled &&
               std::all_of(figure.strokes.begin(), figure.strokes.end(), [](BOOL stroke) { return stroke; });
    });
}

std::string FormatFigures(const std::vector<FigureData>& figures) {
    std::string text;
    for (const FigureData& figure : figures) {
        text += text.empty() ? "M " : " M ";
        AppendPoint(text, figure.start.x, figure.start.y);
        const FLOAT* data = figure.data.data();
        char last = 0;
        for (const XPS_SEGMENT_TYPE type : figure.types) {
            text += ' ';
            if (const char letter = LetterOf(type); letter != last) {
                text += letter;
                text += ' ';
                last = letter;
            }
            const std::size_t count = NumbersOf(type);
            if (IsArc(type)) {
                AppendArc(text, type, data);
            } else {
                for (std::size_t index = 0; index < count; index += 2) {
                    if (index != 0) text += ' ';
                    AppendPoint(text, data[index], data[index + 1]);
                }
            }
            data += count;
        }
        if (figure.isClosed) text += " Z";
    }
    return text;
}

} // namespace OvPlatform
