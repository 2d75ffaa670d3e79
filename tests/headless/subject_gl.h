// Ways of losing the host's GL context.
#pragma once

void makeOtherContextCurrent();
void makeNoContextCurrent();
