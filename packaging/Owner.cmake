# What only the owner of the program can give. Links and licence are left out of the packages while they are empty.
set(BRIMVALE_HELP_HOST "brimvale.example" CACHE STRING
    "Host that serves the online help page")
set(BRIMVALE_DONATION_HOST "donations.example" CACHE STRING
    "Host of the payment service's donation pages")
set(BRIMVALE_DONATION_BUTTON "EXAMPLE" CACHE STRING
    "Identifier that the payment service gave the donation button")
set(BRIMVALE_CONTACT "The Brimvale developers <developers@brimvale.example>" CACHE STRING
    "Name and mail address of who answers for the package")
set(BRIMVALE_LICENSE "" CACHE STRING "Licence, as an SPDX expression")
set(BRIMVALE_HOMEPAGE "" CACHE STRING "Address of the project's page")
set(BRIMVALE_BUGTRACKER "" CACHE STRING "Address where faults are reported")
set(BRIMVALE_SOURCE "" CACHE STRING "Address where the source can be looked at")
set(BRIMVALE_SCREENSHOTS "" CACHE STRING "Address of a folder that serves the pictures of docs/pictures")

set(placeholders "")
foreach(name IN ITEMS HELP_HOST DONATION_HOST DONATION_BUTTON CONTACT)
  if(BRIMVALE_${name} MATCHES "\\.example>?$|^EXAMPLE$")
    list(APPEND placeholders BRIMVALE_${name})
  endif()
endforeach()
if(placeholders)
  list(JOIN placeholders ", " placeholders)
  message(NOTICE "Placeholders until the owner gives the real ones: ${placeholders}")
endif()
