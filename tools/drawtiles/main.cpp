// drawtiles FILE: writes the standard tile set of the GUI.
#include "tifffile.h"
#include "tileset.h"

#include <fstream>
#include <iostream>
#include <string>

int main(int count, char **arguments)
{
    if (count != 2)
    {
        std::cerr << "Usage: drawtiles FILE\nWrites the tile set, a TIFF picture of 128 by 128 pixels, to FILE.\n";
        return 2;
    }
    std::string const bytes = drawtiles::MakeTiffFile(drawtiles::DrawTileSet());
    std::ofstream file(arguments[1], std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
    {
        std::cerr << "drawtiles: cannot write " << arguments[1] << '\n';
        return 1;
    }
    return 0;
}
