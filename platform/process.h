// What the tool needs of the process it runs in.
#pragma once

// Lets standard output collect what is printed until it is flushed. Makes sure that this ends up
// nowhere else where it is closed, and that a reader who has gone away (a closed pipe) is an
// ordinary write error.
void PrepareStandardOutput();
