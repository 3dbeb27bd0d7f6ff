# Mends the descriptions that JUCE's wrapper writes into the LV2 bundle BUNDLE, by what lv2_validate says of them: a preset
# without a name, a property that nothing describes, a plug-in that is no project though it has a maintainer and releases,
# and two of the editor's abilities in lists where they don't belong. Left is the hint that a parameter is a switch, which
# the standard knows for ports only.

# mend (FILE OLD NEW): replaces OLD where it stands.
function (mend file old new)
    file (READ "${BUNDLE}/${file}" text)
    string (REPLACE "${old}" "${new}" text "${text}")
    file (WRITE "${BUNDLE}/${file}" "${text}")
endfunction ()

mend (manifest.ttl "rdfs:label \"\"" "rdfs:label \"Platterdex\"")
file (READ "${BUNDLE}/manifest.ttl" manifest)
if (NOT manifest MATCHES "#Property>" AND manifest MATCHES "<([^>]*:Program)>")
    file (APPEND "${BUNDLE}/manifest.ttl" "
<${CMAKE_MATCH_1}>
	a <http://www.w3.org/1999/02/22-rdf-syntax-ns#Property> ;
	rdfs:label \"Program\" ;
	rdfs:range xsd:int .
")
endif ()
mend (dsp.ttl "\ta lv2:Plugin ;" "\ta lv2:Plugin , doap:Project ;")
mend (ui.ttl "\t\tui:noUserResize ,\n" "")
mend (ui.ttl "\t\tui:resize ,\n\t\topts:interface ,\n\t\topts:options" "\t\tui:resize ,\n\t\topts:options")
