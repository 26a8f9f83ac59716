#pragma once

#include <string>
#include <vector>

/// Writes JSON text value by value, indented by two blanks a level. The caller opens and closes in pairs and
/// gives a key before each value of an object.
///
///     JsonWriter json;
///     json.openObject();
///     json.key("score").value(300);
///     json.close();
///     std::cout << json.text() << '\n';
class JsonWriter {
public:
    JsonWriter& key(const std::string& name);

    JsonWriter& openObject();
    JsonWriter& openArray();
    JsonWriter& close();

    /// Bytes that are no UTF-8 become U+FFFD.
    JsonWriter& value(const std::string& text);
    JsonWriter& value(const char* text) { return value(std::string(text)); }
    JsonWriter& value(long long number);
    JsonWriter& value(int number) { return value(static_cast<long long>(number)); }
    JsonWriter& value(std::size_t number) { return value(static_cast<long long>(number)); }
    /// With so many decimals; null for what is no number.
    JsonWriter& value(double number, int decimals);
    JsonWriter& value(bool truth);
    JsonWriter& null();

    const std::string& text() const { return out; }

private:
    struct Level {
        char closing;
        bool empty;
    };

    JsonWriter& open(char opening, char closing);
    JsonWriter& raw(const std::string& token);
    void beginItem();
    void breakLine();
    void quote(const std::string& text);

    std::string out;
    std::vector<Level> levels;
    bool afterKey = false;
};
