// What the tool needs from its process.
#pragma once

// Lets standard output collect what is printed until it is flushed. If it is closed, what is
// printed goes nowhere else. A closed pipe becomes an ordinary write error.
void PrepareStandardOutput();
