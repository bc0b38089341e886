// The variables that the host itself offers.
#pragma once

class ZnRxVariablesDictionary;

void addHostVariables(ZnRxVariablesDictionary& dictionary);
