return square(SEVEN) == 49 and showView(systemIndex, { button = { "No", "Yes" } }) == true
