MEVSAMPLESTORIES ; The patients that docs/sample-data.md describes; each shows a feature of the panel
 ;
ALL ; Creates them in the order of their numbers
 DO MOTHER,MAN,GIRLS,INFANTS,ELDER,ASTHMATICS,REFUSER,OTHERS
 QUIT
 ;
PERSON(name,sex,birth) ; Files the next patient and returns the number
 QUIT $$FILE^MEVFILES("^MEVPAT",0,name_"^"_sex_"^"_birth)
 ;
AGED(years,days) ; A birth date so many years and days ago
 QUIT $$ADD^MEVDATE($$YEARSAGO^MEVDATE(years),-days)
 ;
MOTHER ; Pregnant, with records of a visit today and of older visits
 NEW dfn,ien,node,visit
 SET dfn=$$PERSON("HARTLEY,MARIGOLD ROSE","F",$$AGED(29,100))
 SET node=dfn_"^G3P1LC1SA1TA0^"_$$ADD^MEVDATE(today,-120)_"^9^"_$$ADD^MEVDATE(today,-300)_"^2^"_$$ADD^MEVDATE(today,160)
 SET ien=$$FILE^MEVFILES("^MEVREP",dfn,node)
 SET visit=$$VISIT^MEVSAMPLE(dfn,today_".0815")
 DO ASTHMA^MEVSAMPLERECORDS(dfn,visit,"",1)
 DO FUNCTIONAL^MEVSAMPLERECORDS(dfn,visit,""),CONTRACT^MEVSAMPLERECORDS(dfn,visit,"","M")
 SET visit=$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,-60)_".143")
 DO ASTHMA^MEVSAMPLERECORDS(dfn,visit,1,2)
 SET node="IMMUNIZATION;9999999.14;2"
 DO REFUSE^MEVSAMPLERECORDS(dfn,$$ADD^MEVDATE(today,-60),"",node,"Wants to ask her midwife first")
 QUIT
 ;
MAN ; Every kind of record that a man of his age can have
 NEW dfn,visit
 SET dfn=$$PERSON("OKONKWO,BARNABY T","M",$$AGED(47,20))
 SET visit=$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,-3)_".1005")
 DO FUNCTIONAL^MEVSAMPLERECORDS(dfn,visit,""),ASTHMA^MEVSAMPLERECORDS(dfn,visit,"",3)
 DO CONTRACT^MEVSAMPLERECORDS(dfn,visit,"","P")
 SET visit=$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,-400)_".1")
 DO CONTRACT^MEVSAMPLERECORDS(dfn,visit,1,"M")
 DO REFUSE^MEVSAMPLERECORDS(dfn,$$ADD^MEVDATE(today,-3),"","LAB;60;3","")
 QUIT
 ;
GIRLS ; Exactly 8 and exactly 9 today: both are listed, but a record can be added only for the older
 NEW dfn,ien,visit,years
 FOR years=8,9 DO
 . SET dfn=$$PERSON("LINDQVIST,"_$SELECT(years=8:"ELSA",1:"FREYA"),"F",$$YEARSAGO^MEVDATE(years))
 . SET ien=$$FILE^MEVFILES("^MEVREP",dfn,dfn_"^G0P0LC0SA0TA0^^9^^^")
 . SET visit=$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,-10)_".09")
 QUIT
 ;
INFANTS ; 4 months, 4, 5 and 6 years, and exactly 7 today
 NEW birth,dfn,index,name,ounces,pounds,visit
 FOR index=1:1:5 DO
 . SET name=$PIECE("PEMBERTON,OTIS^PEMBERTON,MAISIE^TREVELYAN,JUDE^TREVELYAN,WREN^TREVELYAN,PIP","^",index)
 . SET birth=$SELECT(index=1:$$ADD^MEVDATE(today,-130),index=5:$$YEARSAGO^MEVDATE(7),1:$$AGED(index+2,90))
 . SET dfn=$$PERSON(name,$PIECE("M^F^M^F^M","^",index),birth)
 . SET pounds=$PIECE("7^6^1^8^9","^",index),ounces=$PIECE("2^11^1^0^4","^",index)
 . DO BIRTH^MEVSAMPLERECORDS(dfn,pounds,ounces,$PIECE("2^1^3^2^1","^",index),$SELECT(index<3:1,1:""))
 . DO FEEDING^MEVSAMPLERECORDS(dfn,$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(birth,42)_".093"),1)
 . DO FEEDING^MEVSAMPLERECORDS(dfn,$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(birth,100)_".1015"),3)
 . SET visit=$$VISIT^MEVSAMPLE(dfn,today_".09")
 QUIT
 ;
ELDER ; One functional status a quarter
 NEW count,dfn,visit
 SET dfn=$$PERSON("ROSENTHAL,AGNES W","F",$$AGED(84,200))
 FOR count=13:-1:0 DO
 . SET visit=$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,-91*count)_".1130")
 . DO FUNCTIONAL^MEVSAMPLERECORDS(dfn,visit,$SELECT(count>11:1,1:""))
 QUIT
 ;
ASTHMATICS ; Active and inactive in the registry
 NEW comment,count,dfn,visit
 SET dfn=$$PERSON("FERREIRA,LÚCIA","F",$$AGED(15,10))
 FOR count=4:-1:0 DO
 . SET visit=$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,-80*count)_".09")
 . DO ASTHMA^MEVSAMPLERECORDS(dfn,visit,"",5-count\2+1)
 SET comment="Spacer technique checked; sister smokes at home."_$CHAR(13,10)_"Call before the pollen season."
 DO REGISTRY^MEVSAMPLERECORDS(dfn,"A",comment)
 SET dfn=$$PERSON("FERREIRA,TOMÁS","M",$$AGED(33,10))
 DO ASTHMA^MEVSAMPLERECORDS(dfn,$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,-500)_".15"),1,1)
 DO REGISTRY^MEVSAMPLERECORDS(dfn,"I","Moved away in spring.")
 QUIT
 ;
REFUSER ; Every kind of refusal that can be edited, with and without comments
 NEW comment,dfn,kind,locked,type
 SET dfn=$$PERSON("WINTERBOURNE,CECIL","M",$$AGED(61,77))
 FOR kind=1:1:10 DO
 . SET comment=$SELECT(kind#2:"Said: ""not this year"", see note No. "_kind,1:""),locked=$SELECT(kind=10:1,1:"")
 . SET type=$PIECE($TEXT(TYPES+kind^MEVREFUSALS),";;",2)
 . DO REFUSE^MEVSAMPLERECORDS(dfn,$$ADD^MEVDATE(today,-15*kind),locked,type,comment)
 QUIT
 ;
OTHERS ; One patient each: no record, 5,000 records, an emergency visit, a very long name, accents, 200 records
 NEW count,dfn,name,visit
 SET dfn=$$PERSON("QUIET,IRIS","F",$$AGED(40,1))
 SET dfn=$$PERSON("STEADMAN,GERTRUDE","F",$$AGED(91,5))
 FOR count=1:1:5000 DO
 . SET:count#10=1 visit=$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,count\2-2500)_".1015")
 . DO FUNCTIONAL^MEVSAMPLERECORDS(dfn,visit,"")
 SET dfn=$$PERSON("EMBER,ROWAN","M",$$AGED(22,60)),visit=$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,-1)_".2245")
 DO EMERGENCY^MEVSAMPLERECORDS(dfn,visit)
 SET name="FEATHERSTONEHAUGH-CHOLMONDELEY-MARJORIBANKS,BARTHOLOMEW MAXIMILIAN"
 SET dfn=$$PERSON(name,"M",$$AGED(58,3)),visit=$$VISIT^MEVSAMPLE(dfn,today_".07")
 DO FUNCTIONAL^MEVSAMPLERECORDS(dfn,visit,"")
 SET dfn=$$PERSON("MUÑOZ-GARCÍA,ÁNGEL Ó","M",$$AGED(36,3)),visit=$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,-30)_".16")
 DO CONTRACT^MEVSAMPLERECORDS(dfn,visit,"","P")
 SET dfn=$$PERSON("STEADMAN,HORACE","M",$$AGED(78,5))
 FOR count=1:1:200 DO
 . SET:count#10=1 visit=$$VISIT^MEVSAMPLE(dfn,$$ADD^MEVDATE(today,count-201)_".14")
 . DO FUNCTIONAL^MEVSAMPLERECORDS(dfn,visit,"")
 QUIT
