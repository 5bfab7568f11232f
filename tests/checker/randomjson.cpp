#include "checker/randomjson.h"

int RandomJson::below(int limit)
{
    return int(m_random() % unsigned(limit));
}

QByteArray RandomJson::blank()
{
    static const char *const blanks[] = { "", "", "", " ", "\n", "\r\n", "\t", "  \n\t " };
    return oneOf(blanks);
}

QByteArray RandomJson::string()
{
    // Among them what the standard forbids and Qt takes: control characters, unknown escapes, half
    // a surrogate pair.
    static const char *const parts[] = {
        "a",   "title", "global", "é",       "漢", "😀", "\\n",     "\\\"",           "\\\\",
        "\\/", "{",     "}",      ":",       ",",  " ", "\\u00e9", "\\ud83d\\ude00", "\t",
        "\n",  "\x01",  "\\x",    "\\ud800", "'",  "//"
    };
    QByteArray text = "\"";
    for (int i = below(4); i > 0; --i)
        text += oneOf(parts);
    return text + '"';
}

QByteArray RandomJson::number()
{
    static const char *const numbers[] = { "0",    "-1", "4.5", "1e3", "1E-2", "123456789012",
                                           "-0.0", "4.", ".5",  "-.5", "1.e2", "0.1e+1" };
    return oneOf(numbers);
}

QByteArray RandomJson::value(int depth)
{
    static const char *const words[] = { "true", "false", "null" };
    switch (below(depth > 0 ? 6 : 3)) {
    case 0:
        return string();
    case 1:
        return number();
    case 2:
        return oneOf(words);
    case 3: {
        QByteArray list = "[";
        for (int i = below(4); i > 0; --i)
            list += blank() + value(depth - 1) + blank() + (i > 1 ? "," : "");
        return list + blank() + ']';
    }
    default:
        return object(depth - 1);
    }
}

QByteArray RandomJson::object(int depth)
{
    QByteArray text = "{";
    for (int i = below(5); i > 0; --i)
        text += blank() + string() + blank() + ':' + blank() + value(depth) + blank()
                + (i > 1 ? "," : "");
    return text + blank() + '}';
}

QByteArray RandomJson::mutated(QByteArray text)
{
    static const char *const inserted[] = {
        ",",    "\"",           "}",  "{", "[",  "]", ":", "\\", "0",
        "\xff", "\xed\xa0\x80", "//", "'", "\n", "e", "."
    };
    for (int i = 1 + below(3); i > 0; --i) {
        const int place = below(int(text.size()) + 1);
        switch (below(3)) {
        case 0:
            text.remove(place, 1 + below(3));
            break;
        case 1:
            text.insert(place, oneOf(inserted));
            break;
        default:
            text.truncate(text.size() - below(4));
            break;
        }
    }
    return text;
}
