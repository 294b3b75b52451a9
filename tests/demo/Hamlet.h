// A town for the tests, with one of each: small enough to know by heart.
#pragma once

#include "Town.h"

namespace world {

inline const Town& Hamlet() {
    static const Town town = ReadTown(R"([room yard]
title: Yard
sky
prose: A yard.
north: shed
down: cellar

[room shed]
title: Shed
prose: A shed.

[room cellar]
title: Cellar
prose: A cellar.

[creature hen]
name: the tame hen
sight: A hen scratches about.
room: yard
life: 3
aim: 50
bite: 1
worst: mauls
blow: pecks
graze: brushes
miss: flutters past

[creature dog]
name: the wild dog
sight: A dog shows its teeth.
room: shed
life: 9
aim: 50
bite: 6
attacks
worst: mauls
blow: bites
graze: scratches
miss: leaps past

[thing pear]
name: a ripe pear
sight: Pears lie in the grass.
look: It is green.
home: yard
endless
food: 3
eaten: You eat the pear.

[thing stick]
name: a bent stick
sight: A stick leans on the wall.
look: It has a knot.
home: yard

[thing cap]
name: an old cap
sight: A cap hangs on a nail.
look: It is moth-eaten.
home: shed
worn: on your head
guard: 1

[thing helm]
name: an iron helm
sight: A helm stands on a shelf.
look: It is rusty.
home: cellar
worn: on your head
guard: 2

[thing apron]
name: a leather apron
sight: An apron hangs on a hook.
look: It is stained.
home: cellar
worn: round your waist
guard: 3

[text flood]
|Water.
)");
    return town;
}

} // namespace world
