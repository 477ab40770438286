#include "samples/sample_list.h"

namespace veldrin::samples {

namespace {

constexpr auto Anna = "Anna Lindqvist";
constexpr auto Paul = "Paul Moreau";
constexpr auto Grandpa = "Grandpa";
constexpr auto Nobody = "";

// One photograph a line, in groups by folder.
// clang-format off
const Sample TheSamples[] = {
    // Travels
    {"packing_day.jpg", PaintDrops, Noon, 11, {1200, 900}, 0, "1998-06-02 07:12", "Rain on the last morning", Anna, "Through the kitchen window, an hour before the train.", "Travels"},
    {"from_the_train.jpg", PaintMeadow, Noon, 12, {1600, 1067}, 0, "1998-06-02 13:40", "From the train", Anna, "", "Travels"},
    {"balloons.jpg", PaintBalloons, Dawn, 13, {3000, 2000}, 0, "2004-09-11 06:31", "Seven balloons at sunrise", Paul, "They rose one after the other from behind the hill.", "Travels|Nature"},
    {"halfway_house.bmp", PaintSnow, Dusk, 14, {800, 600}, 0, "2001-12-28 16:50", "Halfway house", Paul, "", "Travels"},
    // Travels/Italy
    {"road_south.jpg", PaintRows, Noon, 21, {1600, 1200}, 0, "1999-05-14 11:05", "The road south", Anna, "Tulips as far as one can see.", "Travels/Italy"},
    {"bay.jpg", PaintSea, Noon, 22, {1600, 1200}, 0, "1999-05-16 15:22", "The bay", Paul, "", "Travels/Italy"},
    {"fisherman.gif", PaintSea, Evening, 23, {640, 480}, 0, "1999-05-16 20:10", "Coming home", Paul, "", "Travels/Italy"},
    // Travels/Italy/Venice
    {"canal_noon.jpg", PaintCanal, Noon, 31, {2400, 1600}, 0, "1999-05-18 12:01", "A side canal", Anna, "No name on the wall, and we never found it again.", "Travels/Italy/Venice"},
    {"canal_evening.jpg", PaintCanal, Evening, 32, {6000, 4000}, 0, "1999-05-18 19:47", "Canal in the evening light", Anna, "", "Travels/Italy/Venice|Cities"},
    {"canal_night.jpg", PaintCanal, Dusk, 33, {1600, 1200}, 0, "1999-05-18 21:30", "After dinner", Paul, "Lit windows all along the quay.", "Travels/Italy/Venice|Cities"},
    {"canal_tall.jpg", PaintCanal, Dawn, 34, {1200, 1800}, 6, "1999-05-19 06:15", "Before the boats", Anna, "", "Travels/Italy/Venice"},
    {"canal_pocket.pcx", PaintCanal, Grey, 35, {640, 480}, 0, "1999-05-19 10:00", "A grey morning", Paul, "Taken with the small camera.", "Travels/Italy/Venice"},
    {"lagoon.jpg", PaintSea, Dawn, 36, {3200, 1000}, 0, "1999-05-19 05:50", "The lagoon", Anna, "Panorama of three pictures.", "Travels/Italy/Venice"},
    // Travels/Italy/Tuscany
    {"hills_mist.jpg", PaintMist, Dawn, 41, {2000, 1333}, 0, "1999-05-22 06:40", "Hills in the mist", Anna, "", "Travels/Italy/Tuscany"},
    {"oak.jpg", PaintMeadow, Evening, 42, {1600, 1067}, 0, "1999-05-22 19:55", "The old oak", Paul, "The farmer says it is older than the house.", "Travels/Italy/Tuscany|Nature/Forests"},
    {"poppies.jpg", PaintMeadow, Noon, 43, {1067, 1600}, 8, "1999-05-23 11:20", "Poppies", Anna, "", "Travels/Italy/Tuscany|Nature/Flowers"},
    {"oranges.jpg", PaintFruit, Noon, 44, {1400, 1050}, 0, "1999-05-24 09:05", "Market oranges", Paul, "", "Travels/Italy/Tuscany|Still Life"},
    // Travels/Italy/Dolomites
    {"first_light.jpg", PaintMountains, Dawn, 51, {4000, 2667}, 0, "2003-08-03 05:58", "First light", Paul, "Cold fingers, warm coffee.", "Travels/Italy/Dolomites"},
    {"peaks_noon.jpg", PaintMountains, Noon, 52, {1600, 1200}, 3, "2003-08-03 12:30", "From the pass", Paul, "", "Travels/Italy/Dolomites"},
    {"mountain_lake.jpg", PaintLake, Noon, 53, {1800, 1200}, 0, "2003-08-04 10:12", "Lake below the peaks", Anna, "", "Travels/Italy/Dolomites|Nature"},
    {"alpenglow.jpg", PaintMountains, Evening, 54, {6000, 1600}, 0, "2003-08-04 20:41", "Alpenglow", Paul, "The whole range from the hut.", "Travels/Italy/Dolomites"},
    // Travels/Norway
    {"ferry.jpg", PaintSea, Grey, 61, {1600, 1067}, 0, "2006-02-11 09:30", "Ferry weather", Paul, "", "Travels/Norway"},
    {"fjord.jpg", PaintLake, Dusk, 62, {3000, 2000}, 0, "2006-02-11 16:20", "The fjord at dusk", Anna, "", "Travels/Norway"},
    // Travels/Norway/Lofoten
    {"lighthouse.jpg", PaintLighthouse, Evening, 71, {1600, 1200}, 0, "2006-02-13 15:45", "The lighthouse", Paul, "The lamp was lit while we stood there.", "Travels/Norway/Lofoten"},
    {"lighthouse_tall.jpg", PaintLighthouse, Dusk, 72, {1000, 1500}, 0, "2006-02-13 17:02", "Last ship", Anna, "", "Travels/Norway/Lofoten"},
    {"cold_beach.tga", PaintBeach, Dusk, 73, {800, 600}, 0, "2006-02-14 15:10", "A cold beach", Paul, "", "Travels/Norway/Lofoten"},
    // Travels/Norway/Tromsø
    {"aurora.jpg", PaintAurora, Dusk, 81, {2400, 1600}, 0, "2006-02-17 23:14", "Northern lights", Anna, "Half a minute's exposure.", "Travels/Norway/Troms\u00f8|Nature/Night Sky"},
    {"aurora_second.jpg", PaintAurora, Dusk, 82, {1600, 1600}, 0, "2006-02-17 23:40", "Northern lights, later", Anna, "", "Travels/Norway/Troms\u00f8"},
    {"ski_hut.jpg", PaintSnow, Dusk, 83, {1600, 1067}, 0, "2006-02-18 16:25", "The ski hut", Paul, "", "Travels/Norway/Troms\u00f8|Family/Winter Walks"},
    // Travels/Portugal
    {"long_beach.jpg", PaintBeach, Noon, 91, {2400, 1350}, 0, "2008-07-05 11:11", "The long beach", Anna, "Three hours from end to end.", "Travels/Portugal"},
    {"evening_sail.jpg", PaintSea, Evening, 92, {1600, 1067}, 0, "2008-07-06 20:32", "Evening sail", Paul, "", "Travels/Portugal"},
    {"dunes.jpg", PaintDunes, Evening, 93, {1600, 1200}, 0, "2008-07-08 19:58", "Dunes", Anna, "", "Travels/Portugal"},
    {"reef.jpg", PaintReef, Noon, 94, {1500, 1125}, 0, "2008-07-09 10:45", "Under water", Paul, "The borrowed camera did not leak after all.", "Travels/Portugal|Nature"},
    // Nature
    {"mist.jpg", PaintMist, Grey, 101, {1600, 900}, 0, "2005-10-30 08:05", "October", Anna, "", "Nature"},
    {"great_dune.jpg", PaintDunes, Noon, 102, {1500, 1000}, 0, "2011-03-19 13:00", "The great dune", Paul, "", "Nature"},
    // Nature/Flowers
    {"flower_a.jpg", PaintFlower, Noon, 114, {1500, 1500}, 0, "2005-06-11 10:10", "In the garden", Anna, "", "Nature/Flowers"},
    {"flower_b.jpg", PaintFlower, Noon, 112, {1600, 1200}, 0, "2005-06-11 10:14", "In the garden, closer", Anna, "", "Nature/Flowers"},
    {"flower_c.jpg", PaintFlower, Noon, 113, {1200, 1600}, 6, "2007-07-21 17:33", "The neighbour's best", Anna, "She let me in for this one.", "Nature/Flowers"},
    {"flower_d.gif", PaintFlower, Noon, 117, {480, 480}, 0, "2002-07-01 12:00", "For the web page", Paul, "", "Nature/Flowers"},
    {"tulips.jpg", PaintRows, Evening, 115, {4500, 3000}, 0, "2010-04-25 19:40", "Tulip fields", Paul, "", "Nature/Flowers"},
    // Nature/Forests
    {"beeches.jpg", PaintForest, Noon, 121, {1600, 1200}, 0, "2009-05-09 09:20", "Beeches in May", Anna, "", "Nature/Forests"},
    {"deep_forest.jpg", PaintForest, Dawn, 122, {1200, 1800}, 0, "2009-05-09 07:45", "Morning in the deep forest", Anna, "Not a sound but the birds.", "Nature/Forests"},
    {"forest_wide.bmp", PaintForest, Evening, 123, {1024, 576}, 0, "2009-10-18 16:30", "Late October light", Paul, "", "Nature/Forests"},
    {"red_leaf.jpg", PaintLeaf, Evening, 124, {1600, 1067}, 0, "2009-10-18 16:42", "One leaf", Anna, "", "Nature/Forests"},
    // Nature/Night Sky
    {"milky_way.jpg", PaintStars, Dusk, 131, {6000, 4000}, 0, "2012-08-12 01:20", "The Milky Way over the camp", Paul, "Night of the falling stars; none fell into the picture.", "Nature/Night Sky"},
    {"full_moon.jpg", PaintMoon, Dusk, 132, {1500, 1500}, 0, "2012-09-30 21:05", "Full moon", Paul, "", "Nature/Night Sky"},
    {"moon_clouds.dib", PaintMoon, Dusk, 133, {640, 480}, 0, "2000-11-11 22:22", "Moon behind clouds", Paul, "", "Nature/Night Sky"},
    // Family
    {"sunday_walk.jpg", PaintWalkers, Evening, 141, {1800, 1200}, 0, "2004-10-03 18:02", "Sunday walk", Grandpa, "All of us on the ridge.", "Family"},
    {"first_drive.pcx", PaintMeadow, Grey, 142, {320, 240}, 0, "1996-04-07 14:00", "Where we turned back", Grandpa, "", "Family"},
    // Family/Portraits
    {"portrait_anna.jpg", PaintPortrait, Evening, 151, {1200, 1600}, 0, "2004-10-03 18:30", "Anna", Paul, "", "Family/Portraits"},
    {"portrait_maria.jpg", PaintPortrait, Dawn, 153, {1500, 1500}, 0, "2007-01-01 08:40", "Maria on New Year's morning", Anna, "", "Family/Portraits"},
    {"portrait_old.tga", PaintPortrait, Grey, 156, {480, 640}, 1, "1997-08-16 12:00", "Unknown, from the attic", Nobody, "Found in the blue box.", "Family/Portraits|Family/Grandma's Album"},
    // Family/Winter Walks, Family/Grandma's Album
    {"snowfall.jpg", PaintSnow, Grey, 161, {1600, 1067}, 0, "2010-12-26 11:48", "Snowfall", Anna, "", "Family/Winter Walks"},
    {"winter_mist.jpg", PaintMist, Dusk, 162, {1600, 1200}, 3, "2010-12-27 16:04", "Too late for the path", Paul, "", "Family/Winter Walks"},
    {"slide_lake.pcd", PaintLake, Evening, 171, {768, 512}, 0, "1997-08-16 12:30", "The lake, from a slide", Grandpa, "Scanned by the photo shop.", "Family/Grandma's Album"},
    {"slide_walk.pcd", PaintWalkers, Dawn, 172, {512, 768}, 0, "1997-08-16 12:31", "Early start, from a slide", Grandpa, "", "Family/Grandma's Album"},
    // Cities
    {"skyline.jpg", PaintCity, Dusk, 181, {3600, 1800}, 0, "2013-11-08 17:20", "Skyline", Paul, "", "Cities"},
    {"skyline_dawn.jpg", PaintCity, Dawn, 182, {1600, 1200}, 0, "2013-11-09 07:35", "Before work", Paul, "", "Cities"},
    {"skyline_sunset.jpg", PaintCity, Evening, 183, {1200, 1600}, 8, "2014-06-20 21:12", "From the bridge", Anna, "", "Cities"},
    // Still Life
    {"fruit.jpg", PaintFruit, Noon, 191, {1600, 1200}, 0, "2015-02-01 15:15", "Seven on a table", Anna, "Window light only.", "Still Life"},
    {"drops_small.jpg", PaintDrops, Noon, 195, {320, 240}, 0, "2015-04-14 08:00", "Study in drops", Nobody, "", "Still Life"},
    // In no folder
    {"untitled_1.jpg", PaintLeaf, Noon, 201, {1600, 1200}, 0, "2016-10-22 14:50", "", Nobody, "", ""},
    {"untitled_2.jpg", PaintBeach, Evening, 202, {1600, 1067}, 0, "2016-08-02 20:20", "", Nobody, "", ""},
    {"contact.tga", PaintCity, Grey, 203, {640, 480}, 0, "2002-02-20 10:00", "Grey town", Nobody, "", ""},
};
// clang-format on

}  // namespace

std::span<const Sample> Samples() { return TheSamples; }

QStringList SampleFolders() {
  QStringList folders;
  for (const char* path :
       {"Travels", "Travels/Italy", "Travels/Italy/Venice", "Travels/Italy/Tuscany",
        "Travels/Italy/Dolomites", "Travels/Norway", "Travels/Norway/Lofoten", "Travels/Norway/Troms\u00f8",
        "Travels/Portugal", "Nature", "Nature/Flowers", "Nature/Forests", "Nature/Night Sky", "Family",
        "Family/Portraits", "Family/Winter Walks", "Family/Grandma's Album", "Cities", "Still Life"}) {
    folders << QString::fromUtf8(path);
  }
  return folders;
}

}  // namespace veldrin::samples
